#include "sound/functions/sound_info_function.h"

#include "container/movie_parameter.h"
#include "fmapi/args/arguments.h"
#include "fmapi/args/results.h"
#include "fmapi/errors/vds_error.h"
#include "sound/information/sound_info.h"

#include <string>

namespace vd::sound {

namespace {

constexpr int32_t kParamErr = -50;

FMX_ErrCode Failure(VDSError& error, const FunctionCall& call, int32_t code, const char* message) {
    error.SetCode(code);
    error.SetMessage(message);
    return SetResultUtf8(call.result, error.StatusText());
}

}  // namespace

FMX_ErrCode SoundInfoFunction(const FunctionCall& call) {
    VDSError& error = Begin("Vandrel_GetSoundInfo");
    if (ArgCount(call.args) != 1)
        return Failure(error, call, kParamErr, "This function requires exactly 1 parameter.");
    media::Movie movie;
    bool found = false;
    if (int32_t e = container::MovieFromParameter(call.args, 0, movie, found))
        return Failure(error, call, e, "Could not get parameter #1 as sound.");
    if (!found) return Failure(error, call, kParamErr, "The container in argument #1 seems to be empty.");
    std::string report;
    if (media::Status s = SoundInfoReport(movie, report))
        return Failure(error, call, s, "Failed to get information for this file.");
    error.SetCode(0);
    return SetResultUtf8(call.result, report);
}

}  // namespace vd::sound
