// A decoded picture held whole in memory: 8-bit samples, rows top to bottom without padding. The
// formats read and written by ImageMagick and by our own codecs pass through here; everything
// libvips reads stays a streamed libvips image instead.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace vd::platform {

struct Raster {
    int32_t width = 0, height = 0;
    int bands = 3;  // 1 grey, 2 grey and alpha, 3 RGB, 4 RGBA
    double xDpi = 0, yDpi = 0;  // 0 when the file does not say
    std::vector<uint8_t> pixels;

    size_t RowBytes() const { return size_t(width) * size_t(bands); }
    const uint8_t* Row(int32_t y) const { return pixels.data() + size_t(y) * RowBytes(); }
    uint8_t* Row(int32_t y) { return pixels.data() + size_t(y) * RowBytes(); }
};

}  // namespace vd::platform
