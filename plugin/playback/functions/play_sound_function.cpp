#include "container/movie_parameter.h"
#include "platform/media/movie_from_file.h"
#include "fmapi/args/arguments.h"
#include "fmapi/args/host_number.h"
#include "fmapi/args/value_readers.h"
#include "playback/functions/playback_functions.h"
#include "playback/media_pool.h"
#include "playback/sound_to_play.h"
#include "playback/synchronous_play.h"
#include "util/status_codes.h"

namespace vd::playback {

fmapi::Outcome PlaySoundFunction(const FunctionCall& call) {
    const uint16_t count = ArgCount(call.args);
    if (count < 1 || count > 4) return fmapi::Outcome::Failure(util::kBadParameter, "This function requires 1 to 4 parameters.");
    const bool asynchronous = count >= 2 && ArgHostBoolean(call.args, 1);
    uint32_t start = 0, end = kToTheEnd;
    if (count >= 3)
        if (int16_t e = ArgTime(call.args, 2, start)) return fmapi::Outcome::Failure(e, "Could not get parameter #3 as time.");
    if (count == 4)
        if (int16_t e = ArgTime(call.args, 3, end)) return fmapi::Outcome::Failure(e, "Could not get parameter #4 as time.");

    media::Movie movie;
    bool found = false;
    // Played, not edited: a compressed sound starts at once rather than being counted to its end.
    media::OpenOptions opening;
    opening.exactLength = false;
    if (int32_t e = container::MovieFromParameter(call.args, 0, movie, found, opening))
        return fmapi::Outcome::Failure(e, "Could not get parameter #1 as sound.");
    if (!found) return fmapi::Outcome::Failure(util::kBadParameter, "The container in argument #1 seems to be empty.");

    std::unique_ptr<audio::PlayingSound> sound;
    PrepareStep step;
    const char* playMessage = asynchronous ? "Error adding sound to the asynchronous pool." : "Error playing sound.";
    if (int32_t e = SoundToPlay(std::move(movie), int32_t(start), int32_t(end), sound, step))
        return fmapi::Outcome::Failure(e, step == PrepareStep::kCopying ? "Error making sound selection." : playMessage);

    if (asynchronous) {
        MediaPool* pool = MediaPool::Instance();
        if (!pool) return fmapi::Outcome::Failure(util::kMemoryFull, playMessage);
        if (int32_t e = pool->Add(std::move(sound))) return fmapi::Outcome::Failure(e, playMessage);
        return fmapi::Outcome::Failure(0);
    }
    if (int32_t e = PlayToTheEnd(*sound)) return fmapi::Outcome::Failure(e, playMessage);
    return fmapi::Outcome::Failure(0);
}

fmapi::Outcome StopSoundFunction(const FunctionCall&) {
    if (MediaPool* pool = MediaPool::Instance()) pool->StopAll();
    return fmapi::Outcome::Failure(0);
}

fmapi::Outcome PlayPauseFunction(const FunctionCall& call) {
    if (ArgCount(call.args) > 1) return fmapi::Outcome::Failure(util::kBadParameter, "This function requires 0 or 1 parameter.");
    const uint32_t id = ArgCount(call.args) == 1 ? uint32_t(fmapi::FixPtAsLong(ArgNumber(call.args, 0))) : 0;
    MediaPool* pool = MediaPool::Instance();
    return fmapi::Outcome::Failure(pool ? pool->TogglePause(id) : util::kMemoryFull);
}

}  // namespace vd::playback
