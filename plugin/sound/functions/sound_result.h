// How the sound functions answer a sound: as the container result that holds its "snd " stream.
#pragma once

#include "container/sound_container.h"
#include "fmapi/outcome.h"
#include "platform/media/movie.h"

#include <string_view>

namespace vd::sound {

// The movie's sound as the result, or the failure to make it with the function's message for it.
fmapi::Outcome SoundResult(const media::Movie& movie, std::string_view failureMessage);

// The same for a sound whose stored samples are made by fill.
fmapi::Outcome SoundResult(const container::SoundSamplesMaker& fill, std::string_view failureMessage);

}  // namespace vd::sound
