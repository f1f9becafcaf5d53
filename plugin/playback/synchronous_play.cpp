#include "playback/synchronous_play.h"

#include "platform/common/interrupt_cleanup.h"
#include "platform/ui/escape_key.h"
#include "playback/media_pool.h"
#include "util/status_codes.h"

#include <chrono>
#include <thread>

namespace vd::playback {

namespace {
// How often the keyboard and the sound's end are looked at: soon enough that neither a key nor the
// end waits noticeably.
constexpr auto kLook = std::chrono::milliseconds(10);
}  // namespace

int32_t PlayToTheEnd(audio::PlayingSound& sound) {
    MediaPool* pool = MediaPool::Instance();
    sound.GoToBeginning();
    sound.SetPreferredRate(SaturatedRate(pool ? pool->GetRate(0) : 1.0f));
    sound.SetBalance(pool ? pool->GetBalance(0) : 0.0f);
    platform::ui::EscapeKeyWatch keys;
    sound.Start();
    // A tempo of 0 would hold the call for ever: the sound cannot move.
    if (sound.Rate() <= 0) return util::kBadParameter;
    int32_t result = 0;
    while (!sound.IsDone()) {
        if (keys.Pressed() || platform::StopRequested()) {
            result = util::kUserCancelled;
            break;
        }
        std::this_thread::sleep_for(kLook);
    }
    sound.Stop();
    return result;
}

}  // namespace vd::playback
