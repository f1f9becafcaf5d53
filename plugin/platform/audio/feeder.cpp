#include "platform/audio/feeder.h"

#include "platform/common/interrupt_cleanup.h"

#include <algorithm>
#include <ctime>

namespace vd::audio {

namespace {

// Frames decoded in one go: large enough to amortise a read, small enough that one sound does not
// keep the others waiting.
constexpr uint64_t kChunkFrames = 8192;
const media::OutputFormat kMixFormat{media::FourCC("WAVE"), 44100, 2, 16};

}  // namespace

Feeder::Feeder() {
    sem_init(&wake_, 0, 0);
    thread_ = std::thread([this] { Run(); });
}

Feeder::~Feeder() {
    stopping_ = true;
    sem_post(&wake_);
    thread_.join();
    sem_destroy(&wake_);
}

void Feeder::Add(Voice* voice) {
    {
        std::lock_guard lock(mutex_);
        voices_.push_back(voice);
    }
    sem_post(&wake_);
}

void Feeder::Remove(Voice* voice) {
    std::lock_guard lock(mutex_);
    voices_.erase(std::remove(voices_.begin(), voices_.end(), voice), voices_.end());
}

bool Feeder::Feed(Voice& voice) {
    // Back to the beginning: once the callback has stopped reading the ring, empty it and open the
    // source again.
    const uint64_t rewind = voice.rewindRequest.load(std::memory_order_acquire);
    if (rewind != voice.rewoundFor.load(std::memory_order_relaxed)) {
        if (voice.parkedFor.load(std::memory_order_acquire) != rewind) return false;
        voice.ring.Clear();
        voice.source.reset();
        const Status status = media::MixedBlockSource::Open(voice.movie, kMixFormat, {}, voice.source);
        voice.feedStatus = status;
        voice.sourceOver.store(status != util::kNoError, std::memory_order_release);
        voice.rewoundFor.store(rewind, std::memory_order_release);
        return true;
    }
    if (voice.sourceOver.load(std::memory_order_relaxed)) return false;
    uint64_t room = 0;
    StereoFrame* span = voice.ring.WriteSpan(room);
    if (room < std::min<uint64_t>(kChunkFrames, FrameRing::kFrames / 4)) return false;
    size_t frames = 0;
    const Status status = voice.source->Read(&span->left, size_t(std::min(room, kChunkFrames)), frames);
    voice.ring.Commit(frames);
    if (status != util::kNoError || frames == 0) {
        voice.feedStatus = status;
        voice.sourceOver.store(true, std::memory_order_release);
    }
    return true;
}

void Feeder::Run() {
    platform::IgnoreStopRequestsOnThisThread();
    while (!stopping_) {
        bool worked = false;
        {
            std::lock_guard lock(mutex_);
            for (Voice* voice : voices_) worked |= Feed(*voice);
        }
        if (worked) continue;
        timespec until;
        clock_gettime(CLOCK_REALTIME, &until);
        until.tv_nsec += 5'000'000;
        if (until.tv_nsec >= 1'000'000'000) {
            until.tv_nsec -= 1'000'000'000;
            ++until.tv_sec;
        }
        while (sem_timedwait(&wake_, &until) == -1 && errno == EINTR) {
        }
    }
}

}  // namespace vd::audio
