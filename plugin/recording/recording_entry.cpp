#include "recording/recording_entry.h"

#include "platform/media/errors.h"
#include "recording/recorder.h"

#include <algorithm>
#include <filesystem>

namespace vd::recording {

bool RecordingEntry::In(std::initializer_list<int> states) const {
    return std::find(states.begin(), states.end(), state_.load()) != states.end();
}

void RecordingEntry::GiveBack() {
    if (channel_) recorder_.GiveBackChannel(channel_);
    if (grabber_) recorder_.GiveBackGrabber(grabber_);
    channel_ = nullptr;
    grabber_ = nullptr;
}

util::Status RecordingEntry::Initialise() {
    if (!In({kNew})) return Done(util::kWrongState);
    grabber_ = recorder_.TakeGrabber();
    if (!grabber_) return Done(util::kUnknownError);
    channel_ = recorder_.TakeChannel();
    if (!channel_) {
        GiveBack();
        return Done(util::kUnknownError2);
    }
    channel_->recording = true;
    state_ = kInitialised;
    return Done(util::kNoError);
}

util::Status RecordingEntry::SetTarget(const std::string& path) {
    if (!In({kInitialised, kPrepared})) return Done(util::kWrongState);
    std::error_code error;
    if (!std::filesystem::is_regular_file(path, error)) return Done(util::kFileNotFound);
    target_ = path;
    targetType_ = kAliasReference;
    state_ = kPrepared;
    return Done(util::kNoError);
}

util::Status RecordingEntry::Start() {
    if (!In({kPrepared})) return Done(util::kWrongState);
    if (const util::Status s = audio::SoundRecording::Start(target_, grabber_->format, recording_)) return Done(s);
    state_ = kRecording;
    return Done(util::kNoError);
}

util::Status RecordingEntry::TogglePause() {
    if (In({kRecording})) {
        recording_->Pause();
        state_ = kPaused;
        return Done(util::kNoError);
    }
    if (In({kPaused})) {
        recording_->Resume();
        state_ = kRecording;
        recorder_.WantTimer();
        return Done(util::kNoError);
    }
    return Done(util::kWrongState);
}

util::Status RecordingEntry::Idle() {
    if (!In({kRecording})) return lastError_;
    state_ = kInIdle;
    if (const util::Status s = recording_->Drain()) {
        (void)recording_->Finish();
        state_ = kFailed;
        return Done(s);
    }
    state_ = kRecording;
    return Done(util::kNoError);
}

util::Status RecordingEntry::Stop() {
    if (!In({kRecording, kPaused, kInIdle})) return Done(util::kWrongState);
    const util::Status s = recording_->Finish();
    if (channel_) channel_->recording = false;
    state_ = s ? kFailed : kPrepared;
    return Done(s);
}

void RecordingEntry::Dispose() {
    if (In({kDisposed})) return;
    recording_.reset();
    (void)temporary_.Remove();
    if (channel_) channel_->recording = false;
    GiveBack();
    state_ = kDisposed;
}

}  // namespace vd::recording
