#include "frame/subsystems.h"

#include "container/container_subsystem.h"
#include "fmapi/subsystem_hooks.h"
#include "playback/playback_subsystem.h"
#include "recording/recording_subsystem.h"
#include "sound/sound_subsystem.h"

#include <array>
#include <cstddef>

namespace vd {

namespace {

// Shut down in the reverse order: the recorder before the playback pool whose timer idles it.
constexpr std::array<const SubsystemHooks*, 4> kSubsystems{&container::kContainerSubsystem, &sound::kSoundSubsystem,
                                                           &playback::kPlaybackSubsystem,
                                                           &recording::kRecordingSubsystem};

void ShutDownFirst(size_t count) noexcept {
    for (size_t i = count; i-- > 0;) {
        if (kSubsystems[i]->shutDown) kSubsystems[i]->shutDown();
    }
}

}  // namespace

bool StartUpSubsystems() noexcept {
    for (size_t i = 0; i < kSubsystems.size(); ++i) {
        if (kSubsystems[i]->startUp && !kSubsystems[i]->startUp()) {
            ShutDownFirst(i + 1);
            return false;
        }
    }
    return true;
}

void IdleSubsystems(uint8_t kind) noexcept {
    for (const SubsystemHooks* hooks : kSubsystems) {
        if (hooks->idle) hooks->idle(kind);
    }
}

void ShutDownSubsystems() noexcept { ShutDownFirst(kSubsystems.size()); }

}  // namespace vd
