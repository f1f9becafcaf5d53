// Vandrel_ExtractSound ( sound ; start ; end )
#include "fmapi/args/value_readers.h"
#include "sound/editing/selection_edits.h"
#include "sound/functions/sound_functions.h"
#include "sound/functions/sound_result.h"
#include "sound/sound_function_steps.h"

namespace vd::sound {

namespace {

constexpr RenderMessages kRenderMessages{"Could not get reference to temporary file.", "Failed to export sound as WAVE.",
                                         "Failed to open extracted result."};

}  // namespace

fmapi::Outcome ExtractSoundFunction(const FunctionCall& call) {
    SoundMovie sound;
    if (int32_t e = OpenSoundParameter(call.args, 0, sound))
        return StepFailure(e, "Could not get parameter #1 as sound.");
    uint32_t start = 0, end = 0;
    if (int16_t e = ArgTime(call.args, 1, start))
        return StepFailure(e, "Could not get parameter #2 as time.");
    if (int16_t e = ArgTime(call.args, 2, end))
        return StepFailure(e, "Could not get parameter #3 as time.");

    media::Movie part;
    if (media::Status s = ExtractPart(sound.movie, start, end, part))
        return StepFailure(s, "Could not extract sound.");
    SoundMovie rendered;
    RenderStep step;
    if (media::Status s = RenderResult(std::move(part), {}, rendered, step))
        return StepFailure(s, kRenderMessages.For(step));
    return SoundResult(rendered.movie, "Failed to set result.");
}

}  // namespace vd::sound
