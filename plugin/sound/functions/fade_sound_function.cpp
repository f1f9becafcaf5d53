// Vandrel_FadeSound ( sound ; start ; end ; level ; fadeIn )
#include "fmapi/args/arguments.h"
#include "fmapi/args/host_number.h"
#include "fmapi/args/value_readers.h"
#include "sound/editing/fade.h"
#include "sound/editing/wav_conversion.h"
#include "sound/functions/sound_functions.h"
#include "sound/functions/sound_result.h"
#include "sound/movie_source.h"
#include "sound/sound_function_steps.h"
#include "util/status_codes.h"

#include <cmath>

namespace vd::sound {

namespace {

constexpr media::FourCharCode kFallbackFormat = media::FourCC("lifs");
constexpr media::FourCharCode kMpeg4Audio = media::FourCC("M4A ");

constexpr RenderMessages kRenderMessages{"Could not get reference to a temporary file.",
                                         "Failed to export sound as WAVE.", "Failed to open sound file."};

}  // namespace

fmapi::Outcome FadeSoundFunction(const FunctionCall& call) {
    const FMX_DataVect* args = call.args;
    SoundMovie sound;
    if (int32_t e = OpenSoundParameter(args, 0, sound))
        return StepFailure(e, "Could not get parameter #1 as sound.");
    FadeRequest request;
    if (int16_t e = ArgSignedTime(args, 1, request.start))
        return StepFailure(e, "Could not get parameter #2 as time.");
    if (int16_t e = ArgSignedTime(args, 2, request.end))
        return StepFailure(e, "Could not get parameter #3 as time.");
    const double level = fmapi::FixPtAsFloat(ArgNumber(args, 3));
    if (std::isnan(level)) return StepFailure(util::kBadParameter, "Could not get parameter #4 as number.");
    request.level = float(level);
    request.fadeIn = ArgHostBoolean(args, 4);

    // Sounds in an MPEG-4 file are faded from a PCM copy; sounds with no file behind them (from a
    // container) count as the media layer's own format and are faded as they are.
    media::FourCharCode format = 0;
    if (SourceFormatCode(sound.movie, format) != util::kNoError) format = kFallbackFormat;
    if (format == kMpeg4Audio)
        if (media::Status s = EnsurePcm(sound))
            return StepFailure(s, UnlessTemporaryFileFailed(sound.temporaryFileFailed,
                                                            "Failed to convert movie into intermediate format"));

    Fade fade;
    if (media::Status s = SanitizeFade(request, sound.movie.Duration(), sound.movie.timeScale, fade))
        return StepFailure(s, "Could not sanitize time input parameters.");
    media::RenderOptions options;
    if (media::Status s = FadeOptions(sound.movie, fade, options))
        return StepFailure(s, "Fading failed.");
    SoundMovie rendered;
    RenderStep step;
    if (media::Status s = RenderResult(std::move(sound.movie), options, rendered, step))
        return StepFailure(s, kRenderMessages.For(step));
    return SoundResult(rendered.movie, "Failed to set result.");
}

}  // namespace vd::sound
