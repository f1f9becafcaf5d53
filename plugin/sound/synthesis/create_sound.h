// Vandrel_CreateSound's work: a tone of a named waveform, a duration and a pitch, made as a new
// sound movie in memory (stereo, 16-bit, 44100 Hz).
#pragma once

#include "platform/media/movie.h"

#include <cstdint>
#include <span>
#include <string>

namespace vd::sound {

// A failure's code and the function's own message for it ("" when the code's table message is all
// there is to say).
struct SoundOutcome {
    int32_t code = 0;
    std::string message;
};

// arguments: the function's arguments as UTF-8 texts, in order: waveform, then optionally the
// duration in seconds (default 1) and the frequency as a note name or in hertz (default "A4");
// more are not read. movie is set only on success. A frequency of 0 or below (or one too small for
// 16.16, that is below 1/65536 Hz) is refused as a frequency that cannot be read.
SoundOutcome CreateSound(std::span<const std::string> arguments, media::Movie& movie);

}  // namespace vd::sound
