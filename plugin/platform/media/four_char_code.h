// Four-character codes as the Mac wrote them: the first character in the most significant byte,
// so 'sowt' compares and sorts the same here as in the files and tables that name it.
#pragma once

#include <cstdint>
#include <string>

namespace vd::media {

using FourCharCode = uint32_t;

constexpr FourCharCode FourCC(const char (&text)[5]) {
    return uint32_t(uint8_t(text[0])) << 24 | uint32_t(uint8_t(text[1])) << 16 |
           uint32_t(uint8_t(text[2])) << 8 | uint32_t(uint8_t(text[3]));
}

inline std::string FourCCText(FourCharCode code) {
    return {char(code >> 24), char(code >> 16 & 0xFF), char(code >> 8 & 0xFF), char(code & 0xFF)};
}

}  // namespace vd::media
