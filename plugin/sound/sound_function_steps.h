// The steps every sound-editing function takes around its own work, in this order: the argument
// becomes a sound movie (converted into a temporary WAV file when its samples are not PCM the
// function processes), the work makes a new movie, and that movie is mixed to CD quality and
// stored as the container result. The temporary files belong to owner
// objects (SoundMovie, TemporaryFile), so they are gone when the function returns, whichever step
// failed.
#pragma once

#include "fmapi/outcome.h"
#include "platform/media/movie.h"
#include "platform/media/render.h"
#include "sound/sound_movie.h"

#include <fmx/fmx.h>

#include <cstdint>
#include <optional>
#include <string_view>

namespace vd::sound {

enum class PcmNeed { kAnyPcm, kLittleEndian };

// Argument index as a sound movie, as it comes. 0 and the movie; -50 for an empty argument or one
// that holds no sound (a number); the failure's code otherwise.
int32_t OpenSoundParameter(const FMX_DataVect* args, uint32_t index, SoundMovie& sound);

// OpenSoundParameter, then the PCM the caller needs. 0 with found set; 0 with found false for an
// empty argument; the failure's code otherwise.
int32_t SoundParameter(const FMX_DataVect* args, uint32_t index, PcmNeed need, SoundMovie& sound, bool& found);

// Where rendering a result failed; functions that tell the steps apart say so in their messages.
enum class RenderStep { kTemporaryFile, kWriting, kReopening };

// A function's own messages for the steps of rendering, where it tells them apart.
struct RenderMessages {
    const char* temporaryFile;
    const char* writing;
    const char* reopening;

    const char* For(RenderStep step) const {
        return step == RenderStep::kTemporaryFile ? temporaryFile : step == RenderStep::kWriting ? writing : reopening;
    }
};

// The edited movie (consumed) as a movie of 44100 Hz, 16-bit stereo 'sowt' samples with the
// options' envelopes applied. A movie whose samples already are those (16-bit stereo 44.1 kHz at
// full volume, as most edits leave a sound) becomes the result itself; one whose mix has a length
// known up front is mixed as the result is read, so that it is never held whole; any other is mixed
// once, into memory when it is a few minutes long, else into a temporary WAV file that the result
// then owns and reads. On failure, step says where and nothing is left. -2009 without a sound
// track, -2008 when it has no media.
media::Status RenderResult(media::Movie&& edited, const media::RenderOptions& options, SoundMovie& result,
                           RenderStep& step);

// The two sound arguments of a function that combines sounds: the failure, with the message for
// either, or none when both opened.
std::optional<fmapi::Outcome> OpenTwoSoundParameters(const FMX_DataVect* args, SoundMovie& first, SoundMovie& second);

// A failed step of a sound function: the code and the step's message ("" keeps the code's own),
// unless the sound was refused as too large to convert or render (-108), which says so rather
// than blaming the step or the memory.
fmapi::Outcome StepFailure(int32_t code, std::string_view message);

}  // namespace vd::sound
