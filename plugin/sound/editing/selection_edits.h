// The edits that only select: one sound after another, and a part of a sound. Both share the
// sources' samples (nothing is copied until the result is rendered), so they work on any sound
// the movie layer opens, compressed ones included.
#pragma once

#include "platform/media/errors.h"
#include "platform/media/movie.h"

#include <cstdint>

namespace vd::sound {

// The whole of first followed by the whole of second. Two sounds of one format join into one
// track; others follow one another as tracks of their own.
media::Status AppendSounds(const media::Movie& first, const media::Movie& second, media::Movie& joined);

// The part from start to end (unsigned 16.16 seconds), clipped to the sound; a start past the end
// selects nothing. -2015 when end comes before start.
media::Status ExtractPart(const media::Movie& sound, uint32_t start, uint32_t end, media::Movie& part);

}  // namespace vd::sound
