// Unsigned 16.16 fixed point: how durations, frequencies and rates travel between the synthesis
// layers, so a value is truncated once, the same way, wherever it enters.
#pragma once

#include <cstdint>

namespace vd::sound {

inline constexpr uint32_t kFixedOne = 0x10000;
inline constexpr uint32_t kFixedMax = 0x7FFFFFFF;
inline constexpr uint32_t kRate44100 = 0xAC440000;

// value × 65536, truncated; 2^31 and above saturate to 0x7FFFFFFF; negative values and NaN give 0.
uint32_t FixedFromFloat(double value);

inline double FloatFromFixed(uint32_t fixed) { return double(fixed) / 65536.0; }

}  // namespace vd::sound
