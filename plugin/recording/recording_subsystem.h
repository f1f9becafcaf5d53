// The recorder's part in the plug-in's start and shut-down.
#pragma once

#include "fmapi/subsystem_hooks.h"

namespace vd::recording {

extern const SubsystemHooks kRecordingSubsystem;

}  // namespace vd::recording
