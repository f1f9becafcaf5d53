// Conversion of the PCM layouts a sound description can name ('raw ', 'twos', 'sowt', 'in24',
// 'in32', 'fl32', 'fl64', either byte order) to native 16-bit integers or floats in -1..1.
#pragma once

#include "platform/media/sound_description.h"

#include <cstddef>
#include <cstdint>

namespace vd::media {

// samples: channel samples (frames × channels). The description must be PCM (IsPcm).
void PcmToInt16(const SampleDescription& description, const uint8_t* in, size_t samples, int16_t* out);
void PcmToFloat(const SampleDescription& description, const uint8_t* in, size_t samples, float* out);

// Float in -1..1 to 16 bits, rounded to nearest and clipped: the one rule for every float that
// becomes a 16-bit sample (decoded sound, mixes, rendered files).
int16_t FloatToInt16(float value);

}  // namespace vd::media
