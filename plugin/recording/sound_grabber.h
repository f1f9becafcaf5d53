// The sound input as the recorder hands it out: one grabber and its channels. A recording or the
// format dialog takes them and gives them back, so only one of them uses the input at a time. The
// grabber keeps the format last chosen in the dialog, and every recording made with it uses that
// format; a channel keeps what was set on it.
#pragma once

#include "platform/audio/sound_recording.h"

#include <cstdint>

namespace vd::recording {

struct SoundGrabber {
    audio::RecordingFormat format;
};

struct SoundChannel {
    bool recording = false;  // its usage: in a recording, or idle
    int16_t volume = 256;    // 256 is full volume
};

}  // namespace vd::recording
