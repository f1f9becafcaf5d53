// Mixing two sounds of 16-bit little-endian (or 8-bit) PCM: their average over the length of the
// shorter, then the rest of the longer unchanged.
#pragma once

#include "platform/media/errors.h"
#include "platform/media/movie.h"
#include "platform/media/sound_description.h"

#include <cstdint>
#include <span>

namespace vd::sound {

// b becomes the average of a and b, sample by sample: floor((a + b) / 2) for 16-bit samples
// ('sowt', or 'twos' swapped around the sum), (a + b) >> 1 for unsigned 8-bit 'raw '. -4 for
// other formats and for other than one or two channels.
media::Status AverageSamples(std::span<const uint8_t> a, std::span<uint8_t> b, const media::SampleDescription& description);

// The mix of the first sound tracks of both, as a new movie (one track of the second sound's rate
// and sample description; where nothing is averaged, the longer sound's) whose samples are averaged
// as they are read, so that the mix is never held whole. -50 when their frames differ in size (mono
// with stereo), -2009 without a sound track, -2001 for samples that are not all stored PCM of one
// format.
media::Status MixSounds(const media::Movie& first, const media::Movie& second, media::Movie& mixed);

}  // namespace vd::sound
