// Vandrel_Amplify and Vandrel_Normalize, which is Vandrel_Amplify with the normalize mode chosen
// for the caller.
#include "fmapi/args/arguments.h"
#include "fmapi/args/host_number.h"
#include "sound/editing/amplify.h"
#include "sound/editing/wav_conversion.h"
#include "sound/functions/sound_functions.h"
#include "sound/functions/sound_result.h"
#include "sound/sound_function_steps.h"
#include "util/status_codes.h"

#include <cmath>
#include <optional>

namespace vd::sound {

namespace {

struct GainAndLimit {
    float gain = 1.0f;
    float limit = 1.0f;
};

// Argument i as a number; nullopt when it is no number at all.
std::optional<float> NumberArgument(const FMX_DataVect* args, uint32_t i) {
    const double value = fmapi::FixPtAsFloat(ArgNumber(args, i));
    if (std::isnan(value)) return std::nullopt;
    return float(value);
}

// The whole of Vandrel_Amplify; forced takes the place of the gain and limit arguments.
fmapi::Outcome Amplify(const FMX_DataVect* args, const std::optional<GainAndLimit>& forced) {
    SoundMovie sound;
    if (int32_t e = OpenSoundParameter(args, 0, sound)) return StepFailure(e, "Could not get parameter #1 as sound.");
    GainAndLimit settings;
    if (forced) {
        settings = *forced;
    } else {
        const auto gain = NumberArgument(args, 1);
        if (!gain) return StepFailure(util::kBadParameter, "Could not get parameter #2 as number.");
        settings.gain = *gain;
        if (ArgCount(args) >= 3) {  // more than three are not refused: the rest are not read
            const auto limit = NumberArgument(args, 2);
            if (!limit) return StepFailure(util::kBadParameter, "Could not get parameter #3 as number.");
            settings.limit = *limit;
        }
    }
    if (media::Status s = EnsurePcm(sound))
        return StepFailure(s, UnlessTemporaryFileFailed(sound.temporaryFileFailed, "Could not convert sound."));

    media::Movie amplified;
    if (media::Status s = AmplifyMovie(sound.movie, settings.gain, settings.limit, amplified))
        return StepFailure(s, "Could not amplify sound.");
    SoundMovie rendered;
    RenderStep step;
    if (media::Status s = RenderResult(std::move(amplified), {}, rendered, step))
        return StepFailure(s,
                           UnlessTemporaryFileFailed(step == RenderStep::kTemporaryFile, "Could not amplify sound."));
    return SoundResult(rendered.movie, "Could not set QuickTime container.");
}

}  // namespace

fmapi::Outcome AmplifyFunction(const FunctionCall& call) { return Amplify(call.args, std::nullopt); }

fmapi::Outcome NormalizeFunction(const FunctionCall& call) {
    return Amplify(call.args, GainAndLimit{kNormalizeLimit, kNormalizeLimit});
}

}  // namespace vd::sound
