// Vandrel_FadeSound ( sound ; start ; end ; level ; fadeIn )
#include "container/sound_container.h"
#include "fmapi/args/arguments.h"
#include "fmapi/args/host_number.h"
#include "fmapi/args/value_readers.h"
#include "fmapi/errors/vds_error.h"
#include "sound/functions/editing_functions.h"
#include "sound/editing/fade.h"
#include "sound/movie_source.h"
#include "sound/sound_function_steps.h"
#include "sound/editing/wav_conversion.h"

#include <cmath>

namespace vd::sound {

namespace {

constexpr media::FourCharCode kFallbackFormat = media::FourCC("lifs");
constexpr media::FourCharCode kMpeg4Audio = media::FourCC("M4A ");

constexpr RenderMessages kRenderMessages{"Could not get reference to a temporary file.",
                                         "Failed to export sound as WAVE.", "Failed to open sound file."};

}  // namespace

FMX_ErrCode FadeSoundFunction(const FunctionCall& call) {
    VDSError& error = Begin("Vandrel_FadeSound");
    const FMX_DataVect* args = call.args;
    if (ArgCount(args) != 5) return ReportFailure(error, call.result, -50, "This function expects 5 parameters.");
    SoundMovie sound;
    if (int32_t e = OpenSoundParameter(args, 0, sound))
        return ReportFailure(error, call.result, e, "Could not get parameter #1 as sound.");
    FadeRequest request;
    if (int16_t e = ArgSignedTime(args, 1, request.start))
        return ReportFailure(error, call.result, e, "Could not get parameter #2 as time.");
    if (int16_t e = ArgSignedTime(args, 2, request.end))
        return ReportFailure(error, call.result, e, "Could not get parameter #3 as time.");
    const double level = fmapi::FixPtAsFloat(ArgNumber(args, 3));
    if (std::isnan(level)) return ReportFailure(error, call.result, -50, "Could not get parameter #4 as number.");
    request.level = float(level);
    request.fadeIn = ArgHostBoolean(args, 4);

    // Sounds in an MPEG-4 file are faded from a PCM copy; sounds with no file behind them (from a
    // container) count as the media layer's own format and are faded as they are.
    media::FourCharCode format = 0;
    if (SourceFormatCode(sound.movie, format) != media::kNoError) format = kFallbackFormat;
    if (format == kMpeg4Audio)
        if (media::Status s = EnsurePcm(sound))
            return ReportFailure(error, call.result, s,
                                 UnlessTemporaryFileFailed(sound.temporaryFileFailed,
                                                           "Failed to convert movie into intermediate format"));

    Fade fade;
    if (media::Status s = SanitizeFade(request, sound.movie.Duration(), sound.movie.timeScale, fade))
        return ReportFailure(error, call.result, s, "Could not sanitize time input parameters.");
    media::RenderOptions options;
    if (media::Status s = FadeOptions(sound.movie, fade, options))
        return ReportFailure(error, call.result, s, "Fading failed.");
    SoundMovie rendered;
    RenderStep step;
    if (media::Status s = RenderResult(std::move(sound.movie), options, rendered, step))
        return ReportFailure(error, call.result, s, kRenderMessages.For(step));
    if (int32_t e = container::StoreMovieAsSound(call.result, rendered.movie))
        return ReportFailure(error, call.result, e, "Failed to set result.");
    error.SetCode(0);
    return 0;
}

}  // namespace vd::sound
