#include "image/transform/fixed_point.h"

#include <cmath>
#include <limits>

namespace vd::image {

namespace {

int32_t Saturated(double scaled) {
    if (std::isnan(scaled)) return 0;
    const double rounded = std::round(scaled);
    if (rounded >= 2147483647.0) return std::numeric_limits<int32_t>::max();
    if (rounded <= -2147483648.0) return std::numeric_limits<int32_t>::min();
    return int32_t(rounded);
}

}  // namespace

Fixed X2Fix(double value) { return Saturated(value * 65536.0); }
double Fix2X(Fixed value) { return double(value) / 65536.0; }
Fract X2Frac(double value) { return Saturated(value * 1073741824.0); }
double Frac2X(Fract value) { return double(value) / 1073741824.0; }

int32_t Fix2Long(Fixed value) {
    const int64_t v = value;
    return int32_t(v >= 0 ? (v + 0x8000) >> 16 : -((-v + 0x8000) >> 16));
}

Fixed TruncatedFactor(float factor) {
    const float product = factor * 65536.0f;
    if (product >= 2147483648.0f) return std::numeric_limits<int32_t>::max();
    if (product <= -2147483648.0f) return std::numeric_limits<int32_t>::min();
    return int32_t(product);
}

}  // namespace vd::image
