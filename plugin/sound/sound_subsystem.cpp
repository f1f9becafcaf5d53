#include "sound/sound_subsystem.h"

namespace vd::sound {

namespace {

bool StartUp() noexcept {
    auto& offscreen = OffscreenBuffer();
    offscreen = platform::PixelBuffer::Make(1, 1);
    return offscreen.has_value();
}

void ShutDown() noexcept { OffscreenBuffer().reset(); }

}  // namespace

const SubsystemHooks kSoundSubsystem{"sound", StartUp, nullptr, ShutDown};

std::optional<platform::PixelBuffer>& OffscreenBuffer() {
    static std::optional<platform::PixelBuffer> buffer;
    return buffer;
}

}  // namespace vd::sound
