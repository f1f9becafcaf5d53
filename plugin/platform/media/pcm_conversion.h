// Conversion of the PCM layouts a sound description can name ('raw ', 'twos', 'sowt', 'in24',
// 'in32', 'fl32', 'fl64', either byte order) to native 16-bit integers or floats in -1..1.
#pragma once

#include "platform/media/sound_description.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace vd::media {

// samples: channel samples (frames × channels). The description must be PCM (IsPcm).
void PcmToInt16(const SampleDescription& description, const uint8_t* in, size_t samples, int16_t* out);
void PcmToFloat(const SampleDescription& description, const uint8_t* in, size_t samples, float* out);

// Float in -1..1 to 16 bits, rounded to nearest and clipped: the one rule for every float that
// becomes a 16-bit sample (decoded sound, mixes, rendered files). NaN, which a damaged or hostile
// float file may hold, is silence: clipped like a number it would be a full-scale click.
// Inline and free of library calls, so that loops over many samples vectorize: it runs once for
// every sample of every rendered sound. Adding and taking away 1.5 × 2^23 rounds a float below
// 2^22 to the nearest integer (ties to even, as lrintf does in the default rounding mode).
inline int16_t FloatToInt16(float value) {
    constexpr float kRoundingMagic = 12582912.0f;
    float scaled = value == value ? value * 32768.0f : 0.0f;  // a select, not a branch: still vectorizes
    scaled = std::max(-32768.0f, scaled);
    scaled = std::min(scaled, 32767.0f);
    return int16_t(int32_t((scaled + kRoundingMagic) - kRoundingMagic));
}

// FloatToInt16 over a block of samples.
void FloatsToInt16(const float* in, size_t samples, int16_t* out);

}  // namespace vd::media
