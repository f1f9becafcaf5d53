#include "platform/fs/whole_file.h"

#include "platform/common/posix_status.h"
#include "platform/common/temporary_file_ledger.h"
#include "platform/common/unique_fd.h"
#include "platform/fs/finder_info.h"

#include <cerrno>
#include <new>

#include <fcntl.h>
#include <stdio.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace vd::platform::fs {

namespace {

util::Status Errno() { return StatusFromErrno(errno); }

util::Status WriteAll(int fd, const uint8_t* bytes, size_t size) {
    while (size > 0) {
        const ssize_t n = ::write(fd, bytes, size);
        if (n < 0) {
            if (errno == EINTR) continue;
            return Errno();
        }
        bytes += n;
        size -= size_t(n);
    }
    return util::kNoError;
}

// The file being written, under a hidden name of its own beside the target: removed when it goes
// away unless it was put in place.
class HiddenFile {
public:
    ~HiddenFile() {
        fd_.Reset();
        if (!path_.empty()) ::unlink(path_.c_str());
    }

    util::Status Create(const std::string& folder) {
        std::string pattern = folder + (folder == "/" ? "" : "/") + ".vandrel-export-XXXXXX";
        const int fd = ::mkostemp(pattern.data(), O_CLOEXEC);
        if (fd < 0) return Errno();
        fd_ = UniqueFd(fd);
        path_ = pattern;
        record_ = TemporaryFileRecord::Make(path_);
        return util::kNoError;
    }

    int Descriptor() const { return fd_.Get(); }
    const std::string& Path() const { return path_; }

    // A full disk may show only when the file is closed.
    util::Status Close() {
        const int fd = fd_.Release();
        return ::close(fd) == 0 ? util::kNoError : Errno();
    }

    void PutInPlace() {
        path_.clear();
        record_.Forget();
    }

private:
    UniqueFd fd_;
    std::string path_;
    TemporaryFileRecord record_;  // so that a stop signal or the next start removes it too
};

util::Status RenameWithoutReplacing(const std::string& from, const std::string& to) {
    if (::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) return util::kNoError;
    if (errno != EINVAL && errno != ENOSYS) return Errno();
    // A file system without the flag: a hard link is made only where no name is.
    if (::link(from.c_str(), to.c_str()) != 0) return Errno();
    ::unlink(from.c_str());
    return util::kNoError;
}

}  // namespace

util::Status ReadWholeFile(const std::string& path, std::vector<uint8_t>& bytes, uint64_t limit) {
    UniqueFd fd(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    if (!fd.Valid()) return Errno();
    struct stat info {};
    if (::fstat(fd.Get(), &info) != 0) return Errno();
    if (S_ISDIR(info.st_mode)) return util::kNotAFile;
    if (uint64_t(info.st_size) > limit) return util::kMemoryFull;
    try {
        bytes.resize(size_t(info.st_size));
    } catch (const std::bad_alloc&) {
        return util::kMemoryFull;
    }
    size_t done = 0;
    while (done < bytes.size()) {
        const ssize_t n = ::read(fd.Get(), bytes.data() + done, bytes.size() - done);
        if (n < 0 && errno == EINTR) continue;
        if (n < 0) return Errno();
        if (n == 0) break;
        done += size_t(n);
    }
    bytes.resize(done);
    return util::kNoError;
}

util::Status WriteWholeFile(const std::string& target, const WholeFile& file, bool replace, WriteStep& step) {
    step = WriteStep::kReplacing;
    const size_t slash = target.rfind('/');
    if (slash == std::string::npos || slash + 1 == target.size()) return util::kBadName;
    struct stat old {};
    const bool exists = ::lstat(target.c_str(), &old) == 0;
    if (!exists && errno != ENOENT) return Errno();
    if (exists) {
        if (!replace) return util::kAlreadyExists;
        if (S_ISDIR(old.st_mode)) return util::kNotAFile;
        // A locked file (no write permission for its owner) is kept, as the Finder keeps it.
        if (!(old.st_mode & S_IWUSR)) return util::kPermissionDenied;
    }

    step = WriteStep::kCreating;
    HiddenFile hidden;
    if (util::Status s = hidden.Create(slash == 0 ? "/" : target.substr(0, slash))) return s;
    mode_t mode = 0;
    if (exists && S_ISREG(old.st_mode)) {
        mode = old.st_mode & 07777;  // the replaced file's permissions carry over
    } else {
        const mode_t mask = ::umask(0);
        ::umask(mask);
        mode = 0666 & ~mask;
    }
    if (::fchmod(hidden.Descriptor(), mode) != 0) return Errno();

    step = WriteStep::kWriting;
    if (util::Status s = WriteAll(hidden.Descriptor(), file.data, file.size)) return s;

    if (file.resourceFork) {
        step = WriteStep::kResourceFork;
        const std::vector<uint8_t>& fork = *file.resourceFork;
        if (::fsetxattr(hidden.Descriptor(), kResourceForkAttribute, fork.data(), fork.size(), 0) != 0) return Errno();
    }

    step = WriteStep::kWriting;
    if (util::Status s = hidden.Close()) return s;

    step = WriteStep::kReplacing;
    if (replace) {
        if (::rename(hidden.Path().c_str(), target.c_str()) != 0) return Errno();
    } else if (util::Status s = RenameWithoutReplacing(hidden.Path(), target)) {
        return s;
    }
    hidden.PutInPlace();
    return util::kNoError;
}

}  // namespace vd::platform::fs
