// A container's "snd " stream as a sound movie: one track at full volume whose sound media holds
// the resource's samples in memory.
#pragma once

#include "platform/media/movie.h"
#include "util/status_codes.h"

#include <cstdint>
#include <span>

namespace vd::container {

// 0 with movie set; util::kBadSoundFormat (-206) or util::kCorruptData (-2001) for a resource we
// cannot use; -108 when the samples cannot be held. Compressed samples are decoded here, so the
// movie's samples are always 'raw ' (8-bit), 'twos' (16-bit) or, decoded, 'sowt'.
int32_t MovieFromSoundResource(std::span<const uint8_t> stream, media::Movie& movie);

}  // namespace vd::container
