#include "recording/recording_session.h"

#include "platform/common/interrupt_cleanup.h"
#include "platform/common/posix_status.h"
#include "platform/ui/escape_key.h"
#include "platform/ui/mouse_button.h"
#include "recording/recorder.h"

#include <chrono>
#include <fcntl.h>
#include <new>
#include <thread>
#include <unistd.h>

namespace vd::recording {

namespace {

// How often the keyboard and the input's end are looked at while the call is held.
constexpr auto kLook = std::chrono::milliseconds(20);

util::Status EmptyFile(const std::string& path) {
    const int fd = ::open(path.c_str(), O_WRONLY | O_TRUNC | O_CLOEXEC);
    if (fd < 0) return platform::StatusFromErrno(errno);
    ::close(fd);
    return util::kNoError;
}

}  // namespace

util::Status BeginRecording(const std::string& path, std::shared_ptr<RecordingEntry>& entry) {
    if (const util::Status s = EmptyFile(path)) return s;
    // Held throughout: a tick that came between the registration and the start would find nothing
    // recording and let the timer go, leaving the recording undrained.
    std::lock_guard lock(Recorder::Lock());
    Recorder* recorder = Recorder::Instance();
    if (!recorder) return util::kMemoryFull;
    std::shared_ptr<RecordingEntry> made(new (std::nothrow) RecordingEntry(*recorder));
    if (!made) return util::kMemoryFull;
    if (const util::Status s = made->Initialise()) return s;
    recorder->Register(made);
    util::Status status = made->SetTarget(path);
    if (!status) status = made->Start();
    if (status) {
        recorder->Unregister(made.get());
        return status;
    }
    entry = std::move(made);
    return util::kNoError;
}

util::Status RecordUntilEnded(const std::string& path) {
    platform::ui::EscapeKeyWatch keys(true);
    std::shared_ptr<RecordingEntry> entry;
    if (const util::Status s = BeginRecording(path, entry)) return s;
    for (;;) {
        {
            std::lock_guard lock(Recorder::Lock());
            if (entry->State() == kFailed || entry->InputEnded()) break;
        }
        if (keys.Pressed() || platform::StopRequested() || platform::ui::MouseButtonDown()) break;
        std::this_thread::sleep_for(kLook);
    }
    std::lock_guard lock(Recorder::Lock());
    Recorder::Instance()->Unregister(entry.get());
    if (entry->State() == kFailed) return entry->LastError();
    return entry->Stop();
}

}  // namespace vd::recording
