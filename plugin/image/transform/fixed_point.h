// The fixed-point numbers a transformation matrix is made of: 16.16 (Fixed) for scales, skews,
// angles and translations, 2.30 (Fract) for the perspective column. Conversions saturate: a value
// beyond the range becomes the largest or smallest number the type holds, never a wrapped one.
#pragma once

#include <cstdint>

namespace vd::image {

using Fixed = int32_t;  // 16.16: 0x00010000 is 1.0
using Fract = int32_t;  // 2.30:  0x40000000 is 1.0

inline constexpr Fixed kFixedOne = 0x00010000;
inline constexpr Fract kFractOne = 0x40000000;

// A double to 16.16, rounded to the nearest; beyond the range 0x7FFFFFFF or 0x80000000, and NaN 0.
Fixed X2Fix(double value);
double Fix2X(Fixed value);
// A double to 2.30, rounded and saturated like X2Fix.
Fract X2Frac(double value);
double Frac2X(Fract value);
// A 16.16 value rounded to the nearest whole number, halves away from zero.
int32_t Fix2Long(Fixed value);

// A resize factor as the resize step makes it: the single-precision factor times 65536 (in single
// precision), truncated toward zero; 2147483648 or more becomes 2147483647 (and as far below zero
// the smallest value).
Fixed TruncatedFactor(float factor);

}  // namespace vd::image
