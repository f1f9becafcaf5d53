// JPEG in and out of memory: how drawn pictures go into containers, and how their bytes are read
// back (sizes and pixels) by whoever needs to look at one.
#pragma once

#include "util/status_codes.h"
#include "platform/graphics/pixel_buffer.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace vd::platform {

// The best quality the encoder has (what "maximum quality" asks of it).
inline constexpr int kJpegBestQuality = 100;

// The top-left width x height pixels of the buffer as a JPEG file (colour only: alpha is dropped).
// util::kBadParameter when the region is empty or larger than the buffer; the library's failure
// otherwise.
util::Status EncodeJpeg(const PixelBuffer& buffer, int32_t width, int32_t height, int quality,
                          std::vector<uint8_t>& jpeg);

struct DecodedImage {
    int32_t width = 0, height = 0;
    std::vector<uint8_t> rgb;  // 3 bytes a pixel, rows top to bottom, no padding

    const uint8_t* At(int32_t x, int32_t y) const { return &rgb[(size_t(y) * size_t(width) + size_t(x)) * 3]; }
};

// Any picture libvips reads (JPEG, PNG ...) as 8-bit RGB. util::kCorruptData for bytes that are no
// picture; util::kMemoryFull for a picture of more than PixelBuffer::kMaxPixels pixels, which is
// refused before its pixels are decoded.
util::Status DecodeImage(const void* bytes, size_t size, DecodedImage& image);

}  // namespace vd::platform
