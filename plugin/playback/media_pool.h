// The one owner of every sound that plays in the background while the host goes on: it starts a
// sound handed to it, looks after it from a timer that ticks every 100 ms while anything plays or
// records, and disposes of it at the first tick that finds it done. It also keeps the playback
// defaults (volume, tempo, balance) that every new sound takes.
//
// A sound's identifier is the address of its entry; no function hands identifiers out, so callers
// pass 0, which means the defaults and every entry.
//
// Threads: the host's calls and the timer's tick each hold the pool's recursive lock for their
// whole run (Add reads the defaults under it), so they never interleave on the entries. The tick
// runs the recorder's idle step after it has let the lock go, so the pool's lock is never held
// while the recorder's is taken. The timer's thread is joined only without the lock held.
#pragma once

#include "platform/audio/playing_sound.h"
#include "playback/pool_timer.h"

#include <cstdint>
#include <list>
#include <memory>
#include <mutex>
#include <vector>

namespace vd::playback {

class MediaPool {
public:
    // The pool, made on first use; nullptr when it cannot be made.
    static MediaPool* Instance();
    // Stops and disposes of every sound, stops the timer and destroys the pool (shut-down).
    static void Destroy();

    virtual ~MediaPool();

    // Takes the sound over and starts it with the defaults; always 0.
    int32_t Add(std::unique_ptr<audio::PlayingSound> sound);
    void StopAll();
    // id 0: every entry toggles by its own state; otherwise the matching entry. Always 0.
    int32_t TogglePause(uint32_t id);
    bool IsPlaying(uint32_t id);

    // id 0 sets the default and applies it to every entry; another id, the matching entry only.
    int32_t SetVolume(uint32_t id, float volume);
    int32_t SetRate(uint32_t id, float rate);
    int32_t SetBalance(uint32_t id, float balance);
    // id 0 reads the default; another id the matching entry, or 0 when none matches.
    float GetVolume(uint32_t id);
    float GetRate(uint32_t id);
    float GetBalance(uint32_t id);

    enum class TimerClient : uint16_t { kPool = 0x0001, kRecorder = 0x0002 };
    void AcquireTimer(TimerClient client);
    void ReleaseTimer(TimerClient client);

    // The tick's work, public so that tests can drive it without waiting for the timer.
    void Tick();

    size_t EntryCount();
    // The entries' identifiers, in the order they were added: for tests, since no function hands
    // identifiers out.
    std::vector<uint32_t> EntryIds();

private:
    struct Entry {
        std::unique_ptr<audio::PlayingSound> sound;
    };
    MediaPool() = default;
    uint32_t IdOf(const Entry& entry) const;
    template <typename Visit>
    void ForMatching(uint32_t id, Visit visit);

    std::recursive_mutex lock_;
    std::list<std::unique_ptr<Entry>> entries_;
    float defaultVolume_ = 1.0f;
    float defaultRate_ = 1.0f;
    float defaultBalance_ = 0.0f;
    PoolTimer timer_;  // last: destroyed first, while everything its tick touches is still there
};

// The 16-bit volume word of a volume in the pool's units (1.0 = 256): clamped for setting, as a
// user sets it; and the plain truncation Add applies to the default, which wraps.
int16_t ClampedVolumeWord(float volume);
int16_t WrappedVolumeWord(float volume);
// A rate in 16.16 fixed point: 2147483648 and more saturate, the rest is truncated toward zero.
audio::Fixed SaturatedRate(float rate);

}  // namespace vd::playback
