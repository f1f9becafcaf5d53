// Vandrel_AppendSound ( sound1 ; sound2 )
#include "sound/editing/selection_edits.h"
#include "sound/functions/sound_functions.h"
#include "sound/functions/sound_result.h"
#include "sound/sound_function_steps.h"

namespace vd::sound {

fmapi::Outcome AppendSoundFunction(const FunctionCall& call) {
    SoundMovie first, second;
    if (auto failure = OpenTwoSoundParameters(call.args, first, second)) return std::move(*failure);

    media::Movie joined;
    SoundMovie rendered;
    RenderStep step;
    bool rendering = false;
    media::Status s = AppendSounds(first.movie, second.movie, joined);
    if (s == util::kNoError) s = RenderResult(std::move(joined), {}, rendered, step), rendering = true;
    const bool noTemporaryFile = rendering && step == RenderStep::kTemporaryFile;
    if (s) return StepFailure(s, UnlessTemporaryFileFailed(noTemporaryFile, "Could not concatenate sounds."));
    return SoundResult(rendered.movie, "Could not set output.");
}

}  // namespace vd::sound
