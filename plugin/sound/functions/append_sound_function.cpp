// Vandrel_AppendSound ( sound1 ; sound2 )
#include "container/sound_container.h"
#include "fmapi/args/arguments.h"
#include "fmapi/errors/vds_error.h"
#include "sound/functions/editing_functions.h"
#include "sound/editing/selection_edits.h"
#include "sound/sound_function_steps.h"

namespace vd::sound {

FMX_ErrCode AppendSoundFunction(const FunctionCall& call) {
    VDSError& error = Begin("Vandrel_AppendSound");
    if (ArgCount(call.args) != 2)
        return ReportFailure(error, call.result, -50, "This function requires exactly 2 parameters.");
    SoundMovie first, second;
    if (OpenTwoSoundParameters(error, call.args, call.result, first, second) != 0) return 0;

    media::Movie joined;
    SoundMovie rendered;
    RenderStep step;
    bool rendering = false;
    media::Status s = AppendSounds(first.movie, second.movie, joined);
    if (s == media::kNoError) s = RenderResult(std::move(joined), {}, rendered, step), rendering = true;
    const bool noTemporaryFile = rendering && step == RenderStep::kTemporaryFile;
    if (s) return ReportFailure(error, call.result, s, UnlessTemporaryFileFailed(noTemporaryFile, "Could not concatenate sounds."));
    if (int32_t e = container::StoreMovieAsSound(call.result, rendered.movie))
        return ReportFailure(error, call.result, e, "Could not set output.");
    error.SetCode(0);
    return 0;
}

}  // namespace vd::sound
