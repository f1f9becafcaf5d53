#include "sound/temporary_file.h"

#include "platform/fs/special_folders.h"
#include "sound/delete_file.h"
#include "platform/common/tick_count.h"
#include "util/status_codes.h"

#include <algorithm>
#include <cerrno>
#include <string>

#include <fcntl.h>
#include <time.h>
#include <unistd.h>

namespace vd::sound {

namespace {

constexpr uint32_t kGiveUpTicks = 5 * 60;

std::string NameFor(uint32_t ticks, std::string_view extension) {
    std::string name = "temp-" + std::to_string(ticks);
    name += extension.substr(0, kTemporaryNameLimit - std::min(name.size(), kTemporaryNameLimit));
    return name;
}

void WaitForNextTick(uint32_t ticks) {
    while (TickCount() == ticks) {
        timespec pause{0, 2000000};  // 2 ms: a tick is 16.7 ms
        nanosleep(&pause, nullptr);
    }
}

}  // namespace

TemporaryFile::~TemporaryFile() {
    if (Held()) ::unlink(path_.c_str());  // a file that cannot be removed is left without a word
}

TemporaryFile::TemporaryFile(TemporaryFile&& other) noexcept
    : path_(std::move(other.path_)), record_(std::move(other.record_)) {
    other.path_.clear();
}

TemporaryFile& TemporaryFile::operator=(TemporaryFile&& other) noexcept {
    if (this != &other) {
        if (Held()) ::unlink(path_.c_str());
        path_ = std::move(other.path_);
        record_ = std::move(other.record_);
        other.path_.clear();
    }
    return *this;
}

media::Status TemporaryFile::Create(std::string_view extension, TemporaryFile& file) {
    std::string folder;
    if (media::Status s = platform::fs::FindSpecialFolder(platform::fs::SpecialFolder::TemporaryItems, folder)) return s;
    const uint32_t first = TickCount();
    for (;;) {
        const uint32_t ticks = TickCount();
        const std::string path = folder + "/" + NameFor(ticks, extension);
        const int fd = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
        if (fd >= 0) {
            // The file is empty and nothing was written, so close can only report what open did not.
            if (::close(fd) != 0) {
                ::unlink(path.c_str());
                return media::StatusFromErrno(errno, media::MediaStep::kWriting);
            }
            TemporaryFile made;
            made.path_ = path;
            made.record_ = platform::TemporaryFileRecord::Make(path);
            file = std::move(made);
            return util::kNoError;
        }
        if (errno != EEXIST) return media::StatusFromErrno(errno, media::MediaStep::kWriting);
        if (ticks - first > kGiveUpTicks)
            return media::MediaFailure(util::kAlreadyExists, "no free temporary name in " + folder);
        WaitForNextTick(ticks);
    }
}

std::string TemporaryFile::Release() {
    std::string path = std::move(path_);
    path_.clear();
    record_.Forget();
    return path;
}

media::Status TemporaryFile::Remove() {
    if (!Held()) return util::kNoError;
    const std::string path = std::move(path_);
    path_.clear();
    const media::Status status = DeleteFile(path);
    record_.Forget();  // only once the file is gone, so that no moment leaves it unrecorded
    return status;
}

}  // namespace vd::sound
