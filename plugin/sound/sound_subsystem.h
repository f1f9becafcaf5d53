// The sound subsystem's start-up and shut-down, and the state they keep.
#pragma once

#include "fmapi/subsystem_hooks.h"
#include "platform/graphics/pixel_buffer.h"

#include <optional>

namespace vd::sound {

extern const SubsystemHooks kSoundSubsystem;

// The shared one-pixel offscreen picture, made at start-up so that a plug-in that cannot even
// make that does not start; the drawing functions size their own from it.
std::optional<platform::PixelBuffer>& OffscreenBuffer();

}  // namespace vd::sound
