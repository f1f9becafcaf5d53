// One sound on the output, as its three threads share it: the control thread sets its parameters,
// the feeder decodes it into the ring, the device's callback plays from the ring.
#pragma once

#include "platform/audio/playing_sound.h"
#include "platform/media/block_source.h"

#include <atomic>
#include <cstdint>
#include <memory>
#include <vector>

namespace vd::audio {

// Frames as the media layer mixes them: 44100 Hz, stereo, 16 bits.
struct StereoFrame {
    int16_t left, right;
};

// A single-producer (feeder) / single-consumer (callback) ring of frames. The indexes only grow;
// the ring's size is a power of two so that an index maps to its cell by a mask.
class FrameRing {
public:
    static constexpr uint64_t kFrames = uint64_t(1) << 17;  // about 3 s at 44100 Hz
    static constexpr uint64_t kMask = kFrames - 1;

    FrameRing() : cells_(kFrames) {}

    // Consumer side.
    uint64_t ReadIndex() const { return read_.load(std::memory_order_relaxed); }
    uint64_t Available() const { return write_.load(std::memory_order_acquire) - read_.load(std::memory_order_relaxed); }
    const StereoFrame& At(uint64_t index) const { return cells_[index & kMask]; }
    void Consume(uint64_t frames) { read_.store(read_.load(std::memory_order_relaxed) + frames, std::memory_order_release); }

    // Producer side: the free cells that follow each other in memory from the write index.
    StereoFrame* WriteSpan(uint64_t& frames) {
        const uint64_t w = write_.load(std::memory_order_relaxed);
        const uint64_t free = kFrames - (w - read_.load(std::memory_order_acquire));
        frames = std::min(free, kFrames - (w & kMask));
        return &cells_[w & kMask];
    }
    void Commit(uint64_t frames) { write_.store(write_.load(std::memory_order_relaxed) + frames, std::memory_order_release); }
    // Only while the consumer is known to stay away (a sound parked for its rewind).
    void Clear() {
        read_.store(0, std::memory_order_relaxed);
        write_.store(0, std::memory_order_release);
    }

private:
    std::vector<StereoFrame> cells_;
    alignas(64) std::atomic<uint64_t> write_{0};
    alignas(64) std::atomic<uint64_t> read_{0};
};

struct Voice {
    explicit Voice(media::Movie&& m, int n) : movie(std::move(m)), number(n) {}

    media::Movie movie;  // outlives the source, which reads it
    int number;          // 1, 2, ... in order of making: the name in the virtual device's log

    // Control thread.
    std::atomic<Fixed> rate{0};
    std::atomic<Fixed> preferredRate{kFixedOne};
    std::atomic<int16_t> volume{256};
    std::atomic<float> balance{0.0f};
    std::atomic<uint64_t> rewindRequest{0};  // bumped by GoToBeginning

    // Feeder thread.
    std::unique_ptr<media::MixedBlockSource> source;
    FrameRing ring;
    std::atomic<bool> sourceOver{false};     // no more frames will come into the ring
    std::atomic<Status> feedStatus{util::kNoError};
    std::atomic<uint64_t> rewoundFor{0};     // the rewind request the ring was last restarted for

    // Callback thread (written there only; the control thread reads doneFor).
    std::atomic<uint64_t> parkedFor{0};      // the rewind request the callback stopped reading for
    std::atomic<int64_t> doneFor{-1};        // the rewind request during which it played to its end
    uint64_t rewindSeen = 0;
    bool parked = false;
    double fraction = 0;                     // read position past the ring's read index, in frames
    Fixed appliedRate = 0;
    int16_t appliedVolume = 256;
    float appliedBalance = 0.0f;
};

}  // namespace vd::audio
