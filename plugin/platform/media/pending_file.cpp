#include "platform/media/pending_file.h"

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <vector>

#include <fcntl.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

namespace vd::media {

PendingFile::~PendingFile() {
    if (fd_ >= 0) ::close(fd_);
    if (!temporary_.empty()) ::unlink(temporary_.c_str());
}

Status PendingFile::Create(const std::string& target) {
    std::filesystem::path path(target);
    if (path.filename().empty()) return MediaFailure(util::kBadParameter, "no file name in " + target);
    struct stat info {};
    if (::stat(target.c_str(), &info) == 0 && S_ISDIR(info.st_mode)) return MediaFailure(util::kNotAFile, target + " is a folder");
    std::string pattern = (path.parent_path() / ("." + path.filename().string() + ".XXXXXX")).string();
    std::vector<char> name(pattern.begin(), pattern.end());
    name.push_back('\0');
    int fd = ::mkostemp(name.data(), O_CLOEXEC);
    if (fd < 0) return StatusFromErrno(errno, MediaStep::kWriting);
    // mkostemp makes the file 0600; a rendered sound is an ordinary file for its user.
    mode_t mask = ::umask(0);
    ::umask(mask);
    ::fchmod(fd, 0666 & ~mask);
    fd_ = fd;
    temporary_ = name.data();
    target_ = target;
    std::error_code ignored;
    record_ = platform::TemporaryFileRecord::Make(std::filesystem::absolute(temporary_, ignored).string());
    return util::kNoError;
}

Status PendingFile::Write(const void* bytes, size_t size) {
    const char* p = static_cast<const char*>(bytes);
    while (size > 0) {
        ssize_t n = ::write(fd_, p, size);
        if (n < 0) {
            if (errno == EINTR) continue;
            return StatusFromErrno(errno, MediaStep::kWriting);
        }
        p += n;
        size -= size_t(n);
    }
    return util::kNoError;
}

Status PendingFile::WriteAt(const void* bytes, size_t size, int64_t offset) {
    const char* p = static_cast<const char*>(bytes);
    while (size > 0) {
        ssize_t n = ::pwrite(fd_, p, size, offset);
        if (n < 0) {
            if (errno == EINTR) continue;
            return StatusFromErrno(errno, MediaStep::kWriting);
        }
        p += n;
        size -= size_t(n);
        offset += n;
    }
    return util::kNoError;
}

Status PendingFile::Commit() {
    int fd = fd_;
    fd_ = -1;
    if (::close(fd) != 0) return StatusFromErrno(errno, MediaStep::kWriting);
    if (::rename(temporary_.c_str(), target_.c_str()) != 0) return StatusFromErrno(errno, MediaStep::kWriting);
    temporary_.clear();
    record_.Forget();
    return util::kNoError;
}

}  // namespace vd::media
