// Four-character codes as the Mac wrote them: the first character in the most significant byte,
// so 'sowt' compares and sorts the same here as in the files and tables that name it.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace vd::media {

using FourCharCode = uint32_t;

constexpr FourCharCode FourCC(const char (&text)[5]) {
    return uint32_t(uint8_t(text[0])) << 24 | uint32_t(uint8_t(text[1])) << 16 |
           uint32_t(uint8_t(text[2])) << 8 | uint32_t(uint8_t(text[3]));
}

// A code for something known only by a library's name ("wavpack", "wv"): its first four letters
// or digits, upper-cased if asked, padded with blanks; "????" for a name without any.
inline FourCharCode FourCCFromName(std::string_view name, bool upperCase) {
    char text[5] = "    ";
    size_t n = 0;
    for (char c : name) {
        if (n == 4) break;
        const bool letter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
        if (!letter && !(c >= '0' && c <= '9')) continue;
        text[n++] = upperCase && c >= 'a' && c <= 'z' ? char(c - 'a' + 'A') : c;
    }
    return n == 0 ? FourCC("????") : FourCC(text);
}

// Whether every character of the code is printable ASCII: a code a report can show as it is.
inline bool PrintableFourCC(FourCharCode code) {
    for (int shift = 0; shift < 32; shift += 8)
        if (((code >> shift) & 0xFF) < 32 || ((code >> shift) & 0xFF) > 126) return false;
    return true;
}

inline std::string FourCCText(FourCharCode code) {
    return {char(code >> 24), char(code >> 16 & 0xFF), char(code >> 8 & 0xFF), char(code & 0xFF)};
}

}  // namespace vd::media
