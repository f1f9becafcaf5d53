#include "recording/recording_subsystem.h"

#include "recording/recorder.h"

namespace vd::recording {

namespace {

// Shut down before the playback pool, whose timer runs the recorder's idle step.
void ShutDown() noexcept { Recorder::Destroy(); }

}  // namespace

const SubsystemHooks kRecordingSubsystem{"recording", nullptr, nullptr, ShutDown};

}  // namespace vd::recording
