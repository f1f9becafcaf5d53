// A sound made ready to play: the argument's movie without its pictures, cut to the asked part,
// on the output with the pool's default volume, not started.
#pragma once

#include "platform/audio/playing_sound.h"
#include "platform/media/movie.h"

#include <cstdint>
#include <memory>

namespace vd::playback {

inline constexpr int32_t kToTheEnd = 0x7FFFFFFF;  // 16.16 seconds: an end time that means the end

enum class PrepareStep { kCopying, kOutput };

// start and end are 16.16 seconds. 0, or the failure's code with the step it failed in.
int32_t SoundToPlay(media::Movie&& movie, int32_t start, int32_t end, std::unique_ptr<audio::PlayingSound>& sound,
                    PrepareStep& step);

}  // namespace vd::playback
