// Vandrel_MixSounds ( sound1 ; sound2 )
#include "container/sound_container.h"
#include "fmapi/args/arguments.h"
#include "fmapi/errors/vds_error.h"
#include "sound/functions/editing_functions.h"
#include "sound/editing/mix_sounds.h"
#include "sound/sound_function_steps.h"
#include "sound/editing/wav_conversion.h"

namespace vd::sound {

FMX_ErrCode MixSoundsFunction(const FunctionCall& call) {
    VDSError& error = Begin("Vandrel_MixSounds");
    if (ArgCount(call.args) != 2)
        return ReportFailure(error, call.result, -50, "This function requires exactly 2 parameters.");
    SoundMovie first, second;
    if (OpenTwoSoundParameters(error, call.args, call.result, first, second) != 0) return 0;

    media::Movie mixed;
    SoundMovie rendered;
    RenderStep step;
    bool rendering = false;
    media::Status s = EnsureLittleEndianPcm(first);
    if (s == media::kNoError) s = EnsureLittleEndianPcm(second);
    if (s == media::kNoError) s = MixSounds(first.movie, second.movie, mixed);
    if (s == media::kNoError) s = RenderResult(std::move(mixed), {}, rendered, step), rendering = true;
    const bool noTemporaryFile = first.temporaryFileFailed || second.temporaryFileFailed ||
                                 (rendering && step == RenderStep::kTemporaryFile);
    if (s) return ReportFailure(error, call.result, s, UnlessTemporaryFileFailed(noTemporaryFile, "Could not mix sounds."));
    if (int32_t e = container::StoreMovieAsSound(call.result, rendered.movie))
        return ReportFailure(error, call.result, e, "Could not set result.");
    error.SetCode(0);
    return 0;
}

}  // namespace vd::sound
