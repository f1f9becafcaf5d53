// One recording: the grabber and channel it took, the file it records into, and its state. Every
// operation is allowed in some states only; asked in another, it fails with -3155 and leaves the
// state as it was. The state, as Vandrel_Get and the timer see it:
//   0 new, 1 initialised (input taken), 2 prepared (target set; also after a stop), 3 recording,
//   4 paused, 5 inside an idle step, 6 failed, 7 disposed.
// The recorder's lock is held around every operation on a registered entry.
#pragma once

#include "platform/audio/sound_recording.h"
#include "recording/sound_grabber.h"
#include "sound/temporary_file.h"
#include "util/status_codes.h"

#include <atomic>
#include <cstdint>
#include <memory>
#include <string>

namespace vd::recording {

class Recorder;

enum EntryState : int {
    kNew = 0, kInitialised = 1, kPrepared = 2, kRecording = 3, kPaused = 4, kInIdle = 5, kFailed = 6, kDisposed = 7
};

inline constexpr uint32_t kAliasReference = 0x616C6973;  // 'alis': the target is a file of ours

class RecordingEntry {
public:
    explicit RecordingEntry(Recorder& recorder) : recorder_(recorder) {}
    ~RecordingEntry() { Dispose(); }
    RecordingEntry(const RecordingEntry&) = delete;
    RecordingEntry& operator=(const RecordingEntry&) = delete;

    // 0 → 1: takes the grabber (none: -1) and a channel (none: -2), giving back what it took on
    // failure.
    util::Status Initialise();
    // 1, 2 → 2: the file to record into (it must exist; it is emptied when recording starts).
    util::Status SetTarget(const std::string& path);
    // 2 → 3: opens the input and the file and records.
    util::Status Start();
    // 3 → 4, 4 → 3 (and the recorder takes the timer again); 6 when the input fails either way.
    util::Status TogglePause();
    // 3 → 5 → 3: moves what arrived into the file; 6 when that fails (the recording is stopped).
    // Any other state: nothing.
    util::Status Idle();
    // 3, 4, 5 → 2: completes the file; 6 when that fails.
    util::Status Stop();
    // Any → 7: a recording still running is closed as it stands; grabber and channel go back.
    void Dispose();

    // A temporary target is the entry's to remove when it is disposed, unless it was handed on to
    // the caller in a reference first.
    void KeepTemporaryFile(sound::TemporaryFile file) { temporary_ = std::move(file); }
    void HandOnTemporaryFile() { (void)temporary_.Release(); }

    int State() const { return state_.load(); }
    util::Status LastError() const { return lastError_; }
    uint32_t TargetType() const { return targetType_; }
    const std::string& Target() const { return target_; }
    int64_t FramesRecorded() const { return recording_ ? recording_->FramesRecorded() : 0; }
    // Frames the input delivered that the file never got (the drains fell behind).
    uint64_t FramesDropped() const { return recording_ ? recording_->FramesDropped() : 0; }
    bool InputEnded() const { return recording_ && recording_->InputEnded(); }

private:
    util::Status Done(util::Status status) { return lastError_ = status; }
    bool In(std::initializer_list<int> states) const;
    void GiveBack();

    Recorder& recorder_;
    std::atomic<int> state_{kNew};
    SoundGrabber* grabber_ = nullptr;
    SoundChannel* channel_ = nullptr;
    util::Status lastError_ = util::kNoError;
    uint32_t targetType_ = 0;
    std::string target_;
    std::unique_ptr<audio::SoundRecording> recording_;
    sound::TemporaryFile temporary_;
};

}  // namespace vd::recording
