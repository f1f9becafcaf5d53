#include "recording/recorder.h"

#include "playback/media_pool.h"
#include "playback/recorder_link.h"

#include <algorithm>
#include <new>
#include <utility>

namespace vd::recording {

namespace {

Recorder* gRecorder = nullptr;

int RecordingNow() noexcept {
    std::lock_guard lock(Recorder::Lock());
    return gRecorder && gRecorder->AnyRecording() ? 1 : 0;
}

void IdleFromTick() noexcept {
    std::lock_guard lock(Recorder::Lock());
    if (gRecorder) gRecorder->IdleStep();
}

bool IsRecording(const std::shared_ptr<RecordingEntry>& entry) { return entry->State() == kRecording; }

}  // namespace

std::recursive_mutex& Recorder::Lock() {
    static std::recursive_mutex lock;
    return lock;
}

Recorder* Recorder::Instance() {
    std::lock_guard lock(Lock());
    if (!gRecorder) {
        gRecorder = new (std::nothrow) Recorder();
        if (gRecorder) {
            playback::Recorder().state.store(RecordingNow);
            playback::Recorder().idleStep.store(IdleFromTick);
        }
    }
    return gRecorder;
}

void Recorder::Destroy() {
    std::lock_guard lock(Lock());
    delete gRecorder;
    gRecorder = nullptr;
}

Recorder::~Recorder() {
    // Disposed without a stop: each file keeps what was drained into it.
    for (const auto& entry : entries_) entry->Dispose();
    entries_.clear();
    if (playback::MediaPool* pool = playback::MediaPool::Instance())
        pool->ReleaseTimer(playback::MediaPool::TimerClient::kRecorder);
}

SoundGrabber* Recorder::TakeGrabber() {
    std::lock_guard lock(Lock());
    if (freeGrabbers_.empty()) return nullptr;
    SoundGrabber* grabber = freeGrabbers_.back();
    freeGrabbers_.pop_back();
    return grabber;
}

void Recorder::GiveBackGrabber(SoundGrabber* grabber) {
    std::lock_guard lock(Lock());
    freeGrabbers_.push_back(grabber);
}

SoundChannel* Recorder::TakeChannel() {
    std::lock_guard lock(Lock());
    if (freeChannels_.empty()) return nullptr;
    SoundChannel* channel = freeChannels_.back();
    freeChannels_.pop_back();
    return channel;
}

void Recorder::GiveBackChannel(SoundChannel* channel) {
    std::lock_guard lock(Lock());
    freeChannels_.push_back(channel);
}

void Recorder::Register(std::shared_ptr<RecordingEntry> entry) {
    std::lock_guard lock(Lock());
    entries_.push_back(std::move(entry));
    WantTimer();
}

void Recorder::Unregister(const RecordingEntry* entry) {
    std::lock_guard lock(Lock());
    std::erase_if(entries_, [entry](const auto& e) { return e.get() == entry; });
}

std::vector<std::shared_ptr<RecordingEntry>> Recorder::UnregisterAll() {
    std::lock_guard lock(Lock());
    return std::exchange(entries_, {});
}

std::vector<std::shared_ptr<RecordingEntry>> Recorder::Entries() {
    std::lock_guard lock(Lock());
    return entries_;
}

bool Recorder::AnyRecording() {
    std::lock_guard lock(Lock());
    return std::any_of(entries_.begin(), entries_.end(), IsRecording);
}

void Recorder::IdleStep() {
    std::lock_guard lock(Lock());
    if (AnyRecording()) {
        for (const auto& entry : Entries()) (void)entry->Idle();
    } else if (playback::MediaPool* pool = playback::MediaPool::Instance()) {
        pool->ReleaseTimer(playback::MediaPool::TimerClient::kRecorder);
    }
}

void Recorder::WantTimer() {
    if (playback::MediaPool* pool = playback::MediaPool::Instance())
        pool->AcquireTimer(playback::MediaPool::TimerClient::kRecorder);
}

}  // namespace vd::recording
