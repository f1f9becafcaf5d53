// An offscreen RGBA picture to draw into: a current colour, filled rectangles and lines drawn
// with a pen that moves. The waveform pictures are drawn here before they are encoded.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace vd::platform {

struct Rgba {
    uint8_t r = 0, g = 0, b = 0, a = 255;
    friend bool operator==(const Rgba&, const Rgba&) = default;
};

class PixelBuffer {
public:
    // Largest side we make; a size from user input is checked against it before any allocation.
    static constexpr int32_t kMaxSide = 16384;
    // And the most pixels in all (256 MB of RGBA): two largest sides together would be a gigabyte.
    static constexpr int64_t kMaxPixels = int64_t(1) << 26;

    // Nothing when a side is not in 1..kMaxSide, the area is above kMaxPixels (or the memory
    // cannot be had). New pixels are opaque white, the pen is at (0, 0) and the colour is opaque black.
    static std::optional<PixelBuffer> Make(int32_t width, int32_t height);

    int32_t Width() const { return width_; }
    int32_t Height() const { return height_; }
    size_t RowBytes() const { return static_cast<size_t>(width_) * 4; }
    const uint8_t* Pixels() const { return pixels_.data(); }
    Rgba PixelAt(int32_t x, int32_t y) const;  // outside the buffer: transparent black

    void SetColor(Rgba color) { color_ = color; }
    // Fills [left, right) x [top, bottom), clipped to the buffer; an empty rectangle draws nothing.
    void FillRect(int32_t left, int32_t top, int32_t right, int32_t bottom);
    void MoveTo(int32_t x, int32_t y);
    // A one-pixel line from the pen to (x, y), both ends included, clipped; the pen ends at (x, y).
    void LineTo(int32_t x, int32_t y);

private:
    PixelBuffer(int32_t width, int32_t height);
    void Plot(int64_t x, int64_t y);

    int32_t width_, height_;
    std::vector<uint8_t> pixels_;
    Rgba color_;
    int32_t penX_ = 0, penY_ = 0;
};

}  // namespace vd::platform
