#include "platform/graphics/draw_matrix.h"

#include <algorithm>
#include <cmath>

namespace vd::platform {

namespace {

// Mapped corners land a hair off whole numbers through a 16.16 matrix (each entry is off by up to
// 2^-17, which grows with the coordinates it multiplies); that hair must not add a row or a column
// of white.
double Snap(const ClipRect& r) {
    const double largest = std::max({std::abs(r.left), std::abs(r.top), std::abs(r.right), std::abs(r.bottom)});
    return 0.01 + 2 * largest / 65536.0;
}
// Past this a coordinate cannot be a picture we could hold, whatever the other side is.
constexpr double kLargestCoordinate = 1e9;

}  // namespace

bool DrawMatrix::IsIdentity() const {
    const DrawMatrix identity;
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j)
            if (m[i][j] != identity.m[i][j]) return false;
    return true;
}

bool DrawMatrix::IsAffine() const { return m[0][2] == 0 && m[1][2] == 0 && m[2][2] != 0; }

util::Status MappedBounds(const ClipRect& source, const DrawMatrix& matrix, ClipRect& bounds) {
    if (source.right <= source.left || source.bottom <= source.top) return util::kBadParameter;
    const double xs[4] = {double(source.left), double(source.right), double(source.right), double(source.left)};
    const double ys[4] = {double(source.top), double(source.top), double(source.bottom), double(source.bottom)};
    const auto& m = matrix.m;
    double minX = HUGE_VAL, minY = HUGE_VAL, maxX = -HUGE_VAL, maxY = -HUGE_VAL;
    for (int i = 0; i < 4; ++i) {
        const double w = xs[i] * m[0][2] + ys[i] * m[1][2] + m[2][2];
        // w is linear: positive at the corners means positive all over the rectangle.
        if (!(w > 1e-12)) return util::kBadParameter;
        const double x = (xs[i] * m[0][0] + ys[i] * m[1][0] + m[2][0]) / w;
        const double y = (xs[i] * m[0][1] + ys[i] * m[1][1] + m[2][1]) / w;
        if (!std::isfinite(x) || !std::isfinite(y)) return util::kMemoryFull;
        minX = std::min(minX, x), maxX = std::max(maxX, x);
        minY = std::min(minY, y), maxY = std::max(maxY, y);
    }
    if (std::max({-minX, -minY, maxX, maxY}) > kLargestCoordinate) return util::kMemoryFull;
    const double snap = Snap(source);
    const double left = std::floor(minX + snap), top = std::floor(minY + snap);
    const double right = std::ceil(maxX - snap), bottom = std::ceil(maxY - snap);
    if (right <= left || bottom <= top) return util::kBadParameter;
    if ((right - left) * (bottom - top) > double(kMaxImagePixels)) return util::kMemoryFull;
    bounds = {int32_t(left), int32_t(top), int32_t(right), int32_t(bottom)};
    return util::kNoError;
}

}  // namespace vd::platform
