// What the sound converter did when a sound was stored in a container: every channel mixed down to
// one and the result cut to 8 bits, at the rate asked for.
#pragma once

#include "platform/media/errors.h"
#include "platform/media/media.h"

#include <cstdint>
#include <vector>

namespace vd::media {

// The media's frames as unsigned 8-bit mono (centre 128) at outRate, appended to what out holds. The
// channels of a frame are averaged (rounding down) and the 16-bit mix keeps its high byte; a media
// of another rate goes through the resampler first. util::kMemoryFull when the samples would pass
// maxBytes; out is as it was on failure.
Status ConvertToMono8(const Media& media, int32_t outRate, uint64_t maxBytes, std::vector<uint8_t>& out);

// The same for interleaved float frames already at the output's rate (as a decoding store gives
// them): each sample rounded to 16 bits, then mixed down and cut as above.
void FloatFramesToMono8(const float* in, size_t frames, int channels, uint8_t* out);

}  // namespace vd::media
