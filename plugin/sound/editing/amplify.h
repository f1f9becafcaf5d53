// Scaling a sound's samples by a gain, clipped to a limit, or to full scale (normalizing).
#pragma once

#include "platform/media/errors.h"
#include "platform/media/movie.h"
#include "platform/media/sound_description.h"

#include <cstdint>
#include <span>

namespace vd::sound {

// A limit of exactly this value asks for normalizing: the gain that brings the peak to full scale.
inline constexpr float kNormalizeLimit = -1.0f;

// Scales 16-bit PCM samples in place ('sowt' as they are, 'twos' byte-swapped around the work).
// The limit is kept within 0..1; samples are clipped to limit × 32767 above and to one below its
// negative, then truncated toward zero. In normalize mode the gain is 32767 / the largest absolute
// sample (-32768 has none and does not count; silence keeps gain 1). -4 for 8-bit samples,
// -2001 for anything that is not 16-bit PCM.
media::Status AmplifySamples(std::span<uint8_t> bytes, const media::SampleDescription& description, float gain,
                             float limit);

// The first sound track of source with all its samples amplified, as a new movie with one sound
// track of the same time scale whose samples are scaled as they are read (normalizing reads the
// source once first, for its peak). -2009 without a sound track; AmplifySamples's codes; -108 when
// the samples are more than one read may hold.
media::Status AmplifyMovie(const media::Movie& source, float gain, float limit, media::Movie& amplified);

}  // namespace vd::sound
