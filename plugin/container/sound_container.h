// A sound movie stored as a container result: its first sound track converted to 8-bit mono at
// 44100 Hz and kept as one "snd " stream.
#pragma once

#include "platform/media/movie.h"

#include <fmx/fmx.h>

#include <cstdint>
#include <functional>
#include <vector>

namespace vd::container {

// The "snd " stream's bytes for the movie. -2009 when the movie has no sound track; -108 when the
// sound is too long for a stream (4 GB) or cannot be held; the media layer's code otherwise.
int32_t SoundResourceOfMovie(const media::Movie& movie, std::vector<uint8_t>& stream);

// Sets result to a container with that one stream. 0 or the code; the result is untouched on failure.
int32_t StoreMovieAsSound(FMX_Data* result, const media::Movie& movie);

// The same for samples made elsewhere: fill appends 8-bit mono samples at `rate`, at most maxBytes
// of them, to the vector it is given (as ConvertToMono8 does) and answers 0 or its code.
using SoundSamplesMaker = std::function<int32_t(int32_t rate, uint64_t maxBytes, std::vector<uint8_t>& out)>;
int32_t StoreSoundSamples(FMX_Data* result, const SoundSamplesMaker& fill);

}  // namespace vd::container
