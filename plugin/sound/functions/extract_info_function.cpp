#include "sound/functions/sound_functions.h"

#include "fmapi/args/arguments.h"
#include "sound/information/information_extraction.h"

namespace vd::sound {

fmapi::Outcome ExtractInfoFunction(const FunctionCall& call) {
    const std::string report = ArgCText(ArgText(call.args, 0));
    const std::string key = ArgCount(call.args) > 1 ? ArgCText(ArgText(call.args, 1)) : std::string();
    Extraction found = ExtractInfo(report, key);
    if (found.code != 0) return fmapi::Outcome::Failure(found.code, std::move(found.value));
    return fmapi::Outcome::Text(std::move(found.value));
}

}  // namespace vd::sound
