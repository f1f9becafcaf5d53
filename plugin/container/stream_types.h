// The stream types of container data the plug-in reads and writes, as four-character codes (first
// character most significant).
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace vd::container {

constexpr uint32_t FourCC(const char (&c)[5]) {
    return uint32_t(uint8_t(c[0])) << 24 | uint32_t(uint8_t(c[1])) << 16 | uint32_t(uint8_t(c[2])) << 8 |
           uint32_t(uint8_t(c[3]));
}

inline constexpr uint32_t kSoundStream = FourCC("snd ");
inline constexpr uint32_t kJpegStream = FourCC("JPEG");
inline constexpr uint32_t kSizeStream = FourCC("SIZE");
inline constexpr uint32_t kPictStream = FourCC("PICT");
inline constexpr uint32_t kGifStream = FourCC("GIFf");
inline constexpr uint32_t kTiffStream = FourCC("TIFF");
inline constexpr uint32_t kJfifStream = FourCC("JFIF");
inline constexpr uint32_t kVdImageStream = FourCC("VDIM");
inline constexpr uint32_t kFileStream = FourCC("FILE");
inline constexpr uint32_t kFileNameStream = FourCC("FNAM");
inline constexpr uint32_t kForkStream = FourCC("FORK");
inline constexpr uint32_t kSettingsStream = FourCC("VD70");
// Not a stream: what classification answers for a reference (text) container.
inline constexpr uint32_t kReferenceCode = FourCC("ref ");

std::string FourCCText(uint32_t code);

}  // namespace vd::container
