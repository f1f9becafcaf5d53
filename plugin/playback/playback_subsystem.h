// The playback side's start-up and shut-down: the pool exists from the plug-in's start, and at
// shut-down every sound is stopped, the timer's thread joined and the output closed, so that no
// thread of ours outlives the plug-in.
#pragma once

#include "fmapi/subsystem_hooks.h"

namespace vd::playback {

extern const SubsystemHooks kPlaybackSubsystem;

}  // namespace vd::playback
