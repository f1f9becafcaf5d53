// The sum of the playing sounds, a block at a time, for the device's callback.
//
// Each sound's frame is its 16-bit sample / 32768 × gain × pan, where gain = volume / 256 (a
// negative volume inverts) and the pan law is
//     left × min(1, 1 − balance),  right × min(1, 1 + balance),
// so balance 0 is unity on both sides, −1 silences the right, +1 the left, and values beyond ±1 go
// on linearly (the left grows past unity at −2, say) rather than being clamped.
//
// A sound is read at its rate (varispeed): its read position advances by rate / 65536 frames per
// output frame, between two neighbouring frames the value is interpolated linearly; rate 0 holds
// the position. Once its source is exhausted and every buffered frame was played it is done and
// adds nothing more.
#pragma once

#include "platform/audio/voice.h"

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>

namespace vd::audio {

enum class EventKind { kStart, kStop, kRate, kVolume, kBalance, kDone };
const char* EventName(EventKind kind);

// Something that took effect in a block, at frame `offset` of the block.
struct MixEvent {
    size_t offset;
    EventKind kind;
    int sound;
    double value;
};

// Preallocated room for a block's events (the callback does not allocate); extra ones are dropped.
struct EventList {
    static constexpr size_t kCapacity = 1024;
    std::array<MixEvent, kCapacity> events;
    size_t count = 0;
    void Add(const MixEvent& event) {
        if (count < kCapacity) events[count++] = event;
    }
};

class Mixer {
public:
    static constexpr size_t kSlots = 256;
    static constexpr size_t kMaxBlock = 4096;

    // Control thread: puts a sound into a free slot (false when all are taken), takes it out again.
    // Remove returns only once the callback cannot be reading the sound any more.
    bool Add(Voice* voice);
    void Remove(Voice* voice);

    enum class Outcome { kSilent, kAudible, kNotReady };

    // The callback: interleaved stereo float frames into out (frames <= kMaxBlock). kAudible when a
    // sound was playing in the block (rate ≠ 0, not done), kSilent otherwise (out then holds
    // zeros). With waitForFrames, a block in which some playing sound has not got its frames
    // buffered yet is not rendered at all (kNotReady: nothing changed, call again), so that a
    // rendering faster than real time never hears an underrun. events may be null.
    Outcome Render(float* out, size_t frames, bool waitForFrames, EventList* events);

private:
    bool Ready(Voice& voice, Fixed rate, size_t frames) const;
    void Mix(Voice& voice, float* out, size_t frames, EventList* events);

    std::array<std::atomic<Voice*>, kSlots> slots_{};
    std::atomic<size_t> slotsInUse_{0};  // slots past this one were never used
    // Bumped on entering and on leaving Render: odd while the callback runs.
    std::atomic<uint64_t> epoch_{0};
    // Callback's own: who sat in each slot at the last block and whether it was playing, to log a
    // destroyed sound's silence.
    std::array<int, kSlots> lastSound_{};
    std::array<bool, kSlots> lastPlaying_{};
};

}  // namespace vd::audio
