// Vandrel_ExtractSound ( sound ; start ; end )
#include "container/sound_container.h"
#include "fmapi/args/arguments.h"
#include "fmapi/args/value_readers.h"
#include "fmapi/errors/vds_error.h"
#include "sound/functions/editing_functions.h"
#include "sound/editing/selection_edits.h"
#include "sound/sound_function_steps.h"

namespace vd::sound {

namespace {

constexpr RenderMessages kRenderMessages{"Could not get reference to temporary file.", "Failed to export sound as WAVE.",
                                         "Failed to open extracted result."};

}  // namespace

FMX_ErrCode ExtractSoundFunction(const FunctionCall& call) {
    VDSError& error = Begin("Vandrel_ExtractSound");
    if (ArgCount(call.args) != 3) return ReportFailure(error, call.result, -50, "This function expects 3 parameters.");
    SoundMovie sound;
    if (int32_t e = OpenSoundParameter(call.args, 0, sound))
        return ReportFailure(error, call.result, e, "Could not get parameter #1 as sound.");
    uint32_t start = 0, end = 0;
    if (int16_t e = ArgTime(call.args, 1, start))
        return ReportFailure(error, call.result, e, "Could not get parameter #2 as time.");
    if (int16_t e = ArgTime(call.args, 2, end))
        return ReportFailure(error, call.result, e, "Could not get parameter #3 as time.");

    media::Movie part;
    if (media::Status s = ExtractPart(sound.movie, start, end, part))
        return ReportFailure(error, call.result, s, "Could not extract sound.");
    SoundMovie rendered;
    RenderStep step;
    if (media::Status s = RenderResult(std::move(part), {}, rendered, step))
        return ReportFailure(error, call.result, s, kRenderMessages.For(step));
    if (int32_t e = container::StoreMovieAsSound(call.result, rendered.movie))
        return ReportFailure(error, call.result, e, "Failed to set result.");
    error.SetCode(0);
    return 0;
}

}  // namespace vd::sound
