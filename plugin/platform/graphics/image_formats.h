// The picture formats of the graphics layer, each under its four-character type: which library
// reads and writes it, its file-name extension and what a person calls it.
#pragma once

#include <cstdint>
#include <span>

namespace vd::platform {

enum class ImageEngine {
    kVips,            // read and written by libvips, streamed
    kMagick,          // read and written by ImageMagick, naming the format (whole in memory)
    kMacPaint,        // our own codec
    kQuickTimeImage,  // our own container around a PNG (read: around what libvips reads)
};

struct ImageFormat {
    uint32_t code;
    const char* extension;
    const char* description;
    ImageEngine engine;
    const char* coder;  // libvips: the saver ("jpegsave_buffer"); ImageMagick: the format ("PICT")
    bool lossy;         // whether its writer loses detail unless asked for lossless quality
};

constexpr uint32_t ImageCode(const char (&c)[5]) {
    return uint32_t(uint8_t(c[0])) << 24 | uint32_t(uint8_t(c[1])) << 16 | uint32_t(uint8_t(c[2])) << 8 | uint8_t(c[3]);
}

// Every format, in the order Vandrel_ListImageOutputTypes lists them.
std::span<const ImageFormat> ImageFormats();

// The format of a type code, including the other names files and old containers use for some
// ("JFIF", "GIF ", "QDRW", "PNG ", "BMP "); nothing for an unknown code.
const ImageFormat* FindImageFormat(uint32_t code);

// Whether the library behind the format can write it on this machine (HEIF needs an encoder
// module that may be missing). Starts libvips for the formats that depend on it.
bool CanWriteImageFormat(const ImageFormat& format);

}  // namespace vd::platform
