// What the playback side asks of the recorder: its state for Vandrel_Get ( "recording" ) and its
// idle step, which the shared timer runs on every tick. The recorder installs them when it is
// built; until then nothing records.
#pragma once

#include <atomic>

namespace vd::playback {

// Atomic: the recorder installs them on the host's thread while the timer's thread may be reading.
struct RecorderLink {
    std::atomic<int (*)() noexcept> state{nullptr};      // 0 when nothing records
    std::atomic<void (*)() noexcept> idleStep{nullptr};  // called by every tick of the shared timer
};

RecorderLink& Recorder();

}  // namespace vd::playback
