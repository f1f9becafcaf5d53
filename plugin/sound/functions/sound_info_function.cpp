#include "sound/functions/sound_functions.h"

#include "container/movie_parameter.h"
#include "sound/information/sound_info.h"
#include "util/status_codes.h"

#include <string>

namespace vd::sound {

fmapi::Outcome SoundInfoFunction(const FunctionCall& call) {
    media::Movie movie;
    bool found = false;
    if (int32_t e = container::MovieFromParameter(call.args, 0, movie, found))
        return fmapi::Outcome::Failure(e, "Could not get parameter #1 as sound.");
    if (!found) return fmapi::Outcome::Failure(util::kBadParameter, "The container in argument #1 seems to be empty.");
    std::string report;
    if (media::Status s = SoundInfoReport(movie, report))
        return fmapi::Outcome::Failure(s, "Failed to get information for this file.");
    return fmapi::Outcome::Text(std::move(report));
}

}  // namespace vd::sound
