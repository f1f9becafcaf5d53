// What the playback side asks of the recorder: its state for Vandrel_Get ( "recording" ) and its
// idle step, which the shared timer runs on every tick. The recorder installs them when it is
// built; until then nothing records.
#pragma once

namespace vd::playback {

struct RecorderLink {
    int (*state)() noexcept = nullptr;      // 0 when nothing records
    void (*idleStep)() noexcept = nullptr;  // called by every tick of the shared timer
};

RecorderLink& Recorder();

}  // namespace vd::playback
