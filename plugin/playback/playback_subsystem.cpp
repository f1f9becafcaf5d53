#include "playback/playback_subsystem.h"

#include "platform/audio/playing_sound.h"
#include "playback/media_pool.h"

namespace vd::playback {

namespace {

bool StartUp() noexcept { return MediaPool::Instance() != nullptr; }

void ShutDown() noexcept {
    MediaPool::Destroy();
    audio::ShutDownOutput();
}

}  // namespace

const SubsystemHooks kPlaybackSubsystem{"playback", StartUp, nullptr, ShutDown};

}  // namespace vd::playback
