#include "platform/graphics/pixel_buffer.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <new>

namespace vd::platform {

PixelBuffer::PixelBuffer(int32_t width, int32_t height)
    : width_(width), height_(height), pixels_(static_cast<size_t>(width) * static_cast<size_t>(height) * 4, 255) {}

std::optional<PixelBuffer> PixelBuffer::Make(int32_t width, int32_t height) {
    if (width < 1 || height < 1 || width > kMaxSide || height > kMaxSide) return std::nullopt;
    if (int64_t(width) * height > kMaxPixels) return std::nullopt;
    try {
        return PixelBuffer(width, height);
    } catch (const std::bad_alloc&) {
        return std::nullopt;
    }
}

Rgba PixelBuffer::PixelAt(int32_t x, int32_t y) const {
    if (x < 0 || y < 0 || x >= width_ || y >= height_) return {0, 0, 0, 0};
    const uint8_t* p = &pixels_[static_cast<size_t>(y) * RowBytes() + static_cast<size_t>(x) * 4];
    return {p[0], p[1], p[2], p[3]};
}

void PixelBuffer::Plot(int64_t x, int64_t y) {
    if (x < 0 || y < 0 || x >= width_ || y >= height_) return;
    uint8_t* p = &pixels_[static_cast<size_t>(y) * RowBytes() + static_cast<size_t>(x) * 4];
    p[0] = color_.r, p[1] = color_.g, p[2] = color_.b, p[3] = color_.a;
}

void PixelBuffer::FillRect(int32_t left, int32_t top, int32_t right, int32_t bottom) {
    left = std::max(left, 0), top = std::max(top, 0);
    right = std::min(right, width_), bottom = std::min(bottom, height_);
    for (int32_t y = top; y < bottom; ++y)
        for (int32_t x = left; x < right; ++x) Plot(x, y);
}

void PixelBuffer::MoveTo(int32_t x, int32_t y) { penX_ = x, penY_ = y; }

namespace {

// Cuts the segment to the rectangle [lo, hi] on both axes (Liang-Barsky). False when nothing of it
// lies inside. Used so that a line between far-away points costs what its visible part costs.
bool ClipSegment(double& x0, double& y0, double& x1, double& y1, double loX, double loY, double hiX, double hiY) {
    double t0 = 0, t1 = 1, dx = x1 - x0, dy = y1 - y0;
    const double p[4] = {-dx, dx, -dy, dy};
    const double q[4] = {x0 - loX, hiX - x0, y0 - loY, hiY - y0};
    for (int i = 0; i < 4; ++i) {
        if (p[i] == 0) {
            if (q[i] < 0) return false;
            continue;
        }
        double t = q[i] / p[i];
        if (p[i] < 0) t0 = std::max(t0, t);
        else t1 = std::min(t1, t);
        if (t0 > t1) return false;
    }
    double sx = x0, sy = y0;
    x0 = sx + t0 * dx, y0 = sy + t0 * dy;
    x1 = sx + t1 * dx, y1 = sy + t1 * dy;
    return true;
}

}  // namespace

void PixelBuffer::LineTo(int32_t x, int32_t y) {
    double fx0 = penX_, fy0 = penY_, fx1 = x, fy1 = y;
    penX_ = x, penY_ = y;
    // A line inside the buffer is drawn exactly from end to end; one that leaves it is first cut
    // to the buffer (with a pixel of margin), so its cost never depends on how far away it ends.
    if (!ClipSegment(fx0, fy0, fx1, fy1, -1, -1, width_, height_)) return;
    int64_t x0 = std::llround(fx0), y0 = std::llround(fy0), x1 = std::llround(fx1), y1 = std::llround(fy1);
    int64_t dx = std::llabs(x1 - x0), dy = -std::llabs(y1 - y0);
    int64_t sx = x0 < x1 ? 1 : -1, sy = y0 < y1 ? 1 : -1;
    int64_t err = dx + dy;
    for (;;) {
        Plot(x0, y0);
        if (x0 == x1 && y0 == y1) break;
        int64_t e2 = 2 * err;
        if (e2 >= dy) err += dy, x0 += sx;
        if (e2 <= dx) err += dx, y0 += sy;
    }
}

}  // namespace vd::platform
