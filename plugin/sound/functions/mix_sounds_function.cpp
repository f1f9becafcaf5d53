// Vandrel_MixSounds ( sound1 ; sound2 )
#include "sound/editing/mix_sounds.h"
#include "sound/editing/wav_conversion.h"
#include "sound/functions/sound_functions.h"
#include "sound/functions/sound_result.h"
#include "sound/sound_function_steps.h"

namespace vd::sound {

fmapi::Outcome MixSoundsFunction(const FunctionCall& call) {
    SoundMovie first, second;
    if (auto failure = OpenTwoSoundParameters(call.args, first, second)) return std::move(*failure);

    media::Movie mixed;
    SoundMovie rendered;
    RenderStep step;
    bool rendering = false;
    media::Status s = EnsureLittleEndianPcm(first);
    if (s == util::kNoError) s = EnsureLittleEndianPcm(second);
    if (s == util::kNoError) s = MixSounds(first.movie, second.movie, mixed);
    if (s == util::kNoError) s = RenderResult(std::move(mixed), {}, rendered, step), rendering = true;
    const bool noTemporaryFile = first.temporaryFileFailed || second.temporaryFileFailed ||
                                 (rendering && step == RenderStep::kTemporaryFile);
    if (s) return StepFailure(s, UnlessTemporaryFileFailed(noTemporaryFile, "Could not mix sounds."));
    return SoundResult(rendered.movie, "Could not set result.");
}

}  // namespace vd::sound
