// Playing a sound while the host's call waits for it: the call returns when the sound has ended,
// or with -128 when a person pressed Escape in the host's terminal or the process was told to stop
// (Ctrl-C at a prompt that goes on).
#pragma once

#include "platform/audio/playing_sound.h"

#include <cstdint>

namespace vd::playback {

int32_t PlayToTheEnd(audio::PlayingSound& sound);

}  // namespace vd::playback
