#include "sound/functions/sound_functions.h"

#include "fmapi/args/arguments.h"
#include "sound/functions/sound_result.h"
#include "sound/sound_function_steps.h"
#include "sound/synthesis/create_sound.h"

#include <algorithm>
#include <string>
#include <vector>

namespace vd::sound {

namespace {

constexpr uint16_t kArgumentsRead = 3;  // waveform, duration, frequency; later ones are not read

}  // namespace

fmapi::Outcome CreateSoundFunction(const FunctionCall& call) {
    std::vector<std::string> arguments;
    const uint16_t count = std::min(ArgCount(call.args), kArgumentsRead);
    for (uint16_t i = 0; i < count; ++i) arguments.push_back(ArgCText(ArgText(call.args, i)));

    media::Movie movie;
    SoundOutcome outcome = CreateSound(arguments, movie);
    if (outcome.code != 0) return StepFailure(outcome.code, outcome.message);
    return SoundResult(movie, "Could not set sound container.");
}

}  // namespace vd::sound
