#include "sound/functions/create_sound_function.h"

#include "container/sound_container.h"
#include "fmapi/args/arguments.h"
#include "fmapi/errors/vds_error.h"
#include "sound/synthesis/create_sound.h"
#include "sound/sound_function_steps.h"

#include <algorithm>
#include <string>
#include <vector>

namespace vd::sound {

namespace {

constexpr uint16_t kArgumentsRead = 3;  // waveform, duration, frequency; later ones are not read

}  // namespace

FMX_ErrCode CreateSoundFunction(const FunctionCall& call) {
    VDSError& error = Begin("Vandrel_CreateSound");
    std::vector<std::string> arguments;
    const uint16_t count = std::min(ArgCount(call.args), kArgumentsRead);
    for (uint16_t i = 0; i < count; ++i) arguments.push_back(ArgCText(ArgText(call.args, i)));

    media::Movie movie;
    SoundOutcome outcome = CreateSound(arguments, movie);
    if (outcome.code != 0) return ReportFailure(error, call.result, outcome.code, outcome.message);
    if (int32_t e = container::StoreMovieAsSound(call.result, movie))
        return ReportFailure(error, call.result, e, "Could not set sound container.");
    error.SetCode(0);
    return 0;
}

}  // namespace vd::sound
