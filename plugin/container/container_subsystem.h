// The container subsystem's start-up: the workaround switches, and whether pictures can be stored
// as JPEG at all.
#pragma once

#include "fmapi/subsystem_hooks.h"

namespace vd::container {

extern const SubsystemHooks kContainerSubsystem;

// Found at start-up: a media layer new enough and a JPEG saver present.
bool JpegExportAvailable() noexcept;

}  // namespace vd::container
