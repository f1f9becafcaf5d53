// Sounds made from nothing: a tone of one waveform as a new in-memory movie, and the three-note
// chime the sound-format preview plays. Durations, rates and frequencies are unsigned 16.16.
#pragma once

#include "platform/media/errors.h"
#include "platform/media/movie.h"

#include <cstdint>

namespace vd::sound {

using media::Status;

// The most one segment may hold: a duration that asks for more is refused (-108) before anything
// is allocated, rather than reserving gigabytes on a typing slip. The same cap as every rendered sound.
inline constexpr uint64_t kMaxSegmentBytes = media::kMaxSoundBytes;

// Appends truncate(seconds × hertz) frames of the waveform of flags (computed in single precision,
// as always) to a sound media, described as 'raw ' (8-bit), 'twos' (16-bit) or 'fl32' (32-bit
// float), mono or stereo. phase: the accumulator that carries the sine from segment to segment.
// -50 for a sample size code no generator writes; -108 for a segment too large to hold.
Status AppendToneSegment(uint32_t duration, uint32_t rate, uint32_t frequency, media::Media& media, uint16_t flags,
                         double* phase = nullptr);

// A new movie in memory: one track at full volume, a sound media of time scale `rate` to the nearest
// hertz holding one segment, inserted at time 0. movie is replaced only on success.
Status GenerateSoundMovie(uint32_t duration, uint32_t rate, uint32_t frequency, uint16_t flags, media::Movie& movie);

// A lead-in of 256/65536 s of silence, then C4, E4, G4 (G4, E4, C4 when descending) of
// noteDuration each, the sine's phase running on from note to note.
Status BuildTestChime(uint32_t noteDuration, uint32_t rate, uint16_t flags, bool descending, media::Movie& movie);

// What the sound-format dialog previews: 10922/65536 s a note, 44100 Hz, 16-bit mono sine, ascending.
inline constexpr uint32_t kPreviewNoteDuration = 10922;
inline constexpr uint16_t kPreviewFlags = 0x0110;

}  // namespace vd::sound
