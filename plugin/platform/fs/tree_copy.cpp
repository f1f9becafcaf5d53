#include "platform/fs/tree_copy.h"

#include <atomic>
#include <memory>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <string>
#include <vector>

#include <fcntl.h>
#include <linux/fs.h>
#include <stdio.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include "util/status_codes.h"
#include "platform/fs/real_paths.h"
#include "platform/fs/finder_info.h"
#include "platform/fs/item_probe.h"
#include "platform/fs/tree_delete.h"
#include "platform/fs/unique_fd.h"

namespace vd::platform::fs {

namespace {

using util::Status;
using util::kNoError;

constexpr const char* kCopiedAttributes[] = {kFinderInfoAttribute, kResourceForkAttribute};
constexpr size_t kFallbackChunk = 256 * 1024;

Status Errno() { return StatusFromErrno(errno); }

struct PathParts {
    std::string folder;
    std::string name;
};

PathParts SplitPath(const std::string& path) {
    const size_t slash = path.rfind('/');
    return {slash == 0 ? std::string("/") : path.substr(0, slash), path.substr(slash + 1)};
}

// Attributes that the source has must arrive: a target file system that cannot keep them fails
// the copy rather than silently dropping a resource fork.
Status CopyAttributes(int from, int to) {
    for (const char* name : kCopiedAttributes) {
        const ssize_t size = ::fgetxattr(from, name, nullptr, 0);
        if (size < 0) {
            if (errno == ENODATA || errno == ENOTSUP) continue;
            return Errno();
        }
        std::vector<char> value(static_cast<size_t>(size));
        const ssize_t got = ::fgetxattr(from, name, value.data(), value.size());
        if (got < 0) return Errno();
        if (::fsetxattr(to, name, value.data(), static_cast<size_t>(got), 0) != 0) return Errno();
    }
    return kNoError;
}

// Permissions and times last: adding entries changes a folder's times, and a read-only source must
// not stop us writing its copy.
Status CopyModeAndTimes(int to, const struct stat& from) {
    if (::fchmod(to, from.st_mode & 07777) != 0) return Errno();
    const timespec times[2] = {from.st_atim, from.st_mtim};
    if (::futimens(to, times) != 0) return Errno();
    return kNoError;
}

Status CopyBytesByReading(int from, int to) {
    std::vector<char> buffer(kFallbackChunk);
    for (;;) {
        const ssize_t got = ::read(from, buffer.data(), buffer.size());
        if (got < 0) {
            if (errno == EINTR) continue;
            return Errno();
        }
        if (got == 0) return kNoError;
        for (ssize_t done = 0; done < got;) {
            const ssize_t put = ::write(to, buffer.data() + done, static_cast<size_t>(got - done));
            if (put < 0) {
                if (errno == EINTR) continue;
                return Errno();
            }
            done += put;
        }
    }
}

// copy_file_range lets the kernel copy (or share extents) without the data passing through us;
// file systems and kernels that cannot do it for this pair say so on the first call.
Status CopyBytes(int from, int to) {
    bool first = true;
    for (;;) {
        const ssize_t copied = ::copy_file_range(from, nullptr, to, nullptr, SSIZE_MAX / 2, 0);
        if (copied > 0) {
            first = false;
            continue;
        }
        if (copied == 0) return kNoError;
        if (errno == EINTR) continue;
        if (first && (errno == EXDEV || errno == ENOSYS || errno == EOPNOTSUPP || errno == EINVAL ||
                      errno == EBADF)) {
            return CopyBytesByReading(from, to);
        }
        return Errno();
    }
}

Status CopyEntry(int fromFolder, const char* fromName, int toFolder, const char* toName);

Status CopyFile(int fromFolder, const char* fromName, int toFolder, const char* toName) {
    UniqueFd from(::openat(fromFolder, fromName, O_RDONLY | O_NOFOLLOW | O_CLOEXEC));
    if (!from.Valid()) return Errno();
    struct stat info {};
    if (::fstat(from.Get(), &info) != 0) return Errno();
    UniqueFd to(::openat(toFolder, toName, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600));
    if (!to.Valid()) return Errno();
    Status status = CopyBytes(from.Get(), to.Get());
    if (status == kNoError) status = CopyAttributes(from.Get(), to.Get());
    if (status == kNoError) status = CopyModeAndTimes(to.Get(), info);
    if (to.Close() != 0 && status == kNoError) status = Errno();
    return status;
}

Status CopyLink(int fromFolder, const char* fromName, int toFolder, const char* toName, const struct stat& info) {
    std::vector<char> text(static_cast<size_t>(info.st_size) + 1);
    const ssize_t size = ::readlinkat(fromFolder, fromName, text.data(), text.size());
    if (size < 0) return Errno();
    if (static_cast<size_t>(size) >= text.size()) return util::kIoError;  // changed while we read it
    text[static_cast<size_t>(size)] = '\0';
    if (::symlinkat(text.data(), toFolder, toName) != 0) return Errno();
    const timespec times[2] = {info.st_atim, info.st_mtim};
    ::utimensat(toFolder, toName, times, AT_SYMLINK_NOFOLLOW);  // some file systems cannot; not data
    return kNoError;
}

Status CopyFolder(int fromFolder, const char* fromName, int toFolder, const char* toName) {
    UniqueFd from(::openat(fromFolder, fromName, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    if (!from.Valid()) return Errno();
    struct stat info {};
    if (::fstat(from.Get(), &info) != 0) return Errno();
    if (::mkdirat(toFolder, toName, 0700) != 0) return Errno();
    UniqueFd to(::openat(toFolder, toName, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    if (!to.Valid()) return Errno();

    std::vector<std::string> names;
    {
        UniqueFd streamFd(::dup(from.Get()));
        if (!streamFd.Valid()) return Errno();
        FolderStream stream(::fdopendir(streamFd.Get()));
        if (!stream) return Errno();
        streamFd.Release();
        for (;;) {
            errno = 0;
            const dirent* entry = ::readdir(stream.get());
            if (!entry) {
                if (errno != 0) return Errno();
                break;
            }
            const char* n = entry->d_name;
            if (n[0] == '.' && (n[1] == '\0' || (n[1] == '.' && n[2] == '\0'))) continue;
            names.emplace_back(n);
        }
    }
    for (const std::string& name : names) {
        if (const Status status = CopyEntry(from.Get(), name.c_str(), to.Get(), name.c_str()); status != kNoError) {
            return status;
        }
    }
    if (const Status status = CopyAttributes(from.Get(), to.Get()); status != kNoError) return status;
    return CopyModeAndTimes(to.Get(), info);
}

Status CopyEntry(int fromFolder, const char* fromName, int toFolder, const char* toName) {
    struct stat info {};
    if (::fstatat(fromFolder, fromName, &info, AT_SYMLINK_NOFOLLOW) != 0) return Errno();
    if (S_ISREG(info.st_mode)) return CopyFile(fromFolder, fromName, toFolder, toName);
    if (S_ISDIR(info.st_mode)) return CopyFolder(fromFolder, fromName, toFolder, toName);
    if (S_ISLNK(info.st_mode)) return CopyLink(fromFolder, fromName, toFolder, toName, info);
    return util::kBadParameter;
}

// A name no one else uses: our process id and a counter, retried should it exist all the same.
std::string TemporaryName() {
    static std::atomic<unsigned> counter{0};
    return ".vandrel-copy-" + std::to_string(::getpid()) + "-" + std::to_string(counter.fetch_add(1));
}

bool IsAtOrInside(const std::string& path, const std::string& folder) {
    return path == folder || (path.starts_with(folder) && (folder == "/" || path[folder.size()] == '/'));
}

// The complete copy goes in under the target's name. An existing target is swapped out in one step
// where the file system can, so that there is never a moment without one of the two.
Status PutInPlace(int folderFd, const std::string& temporary, const std::string& name, bool replace) {
    if (!replace) {
        if (::renameat2(folderFd, temporary.c_str(), folderFd, name.c_str(), RENAME_NOREPLACE) == 0) return kNoError;
        if (errno != EINVAL && errno != ENOSYS) return Errno();
        struct stat info {};
        if (::fstatat(folderFd, name.c_str(), &info, AT_SYMLINK_NOFOLLOW) == 0) return util::kAlreadyExists;
        if (::renameat(folderFd, temporary.c_str(), folderFd, name.c_str()) != 0) return Errno();
        return kNoError;
    }
    struct stat old {};
    if (::fstatat(folderFd, name.c_str(), &old, AT_SYMLINK_NOFOLLOW) != 0) {
        if (errno != ENOENT) return Errno();
        if (::renameat(folderFd, temporary.c_str(), folderFd, name.c_str()) != 0) return Errno();
        return kNoError;
    }
    if (::renameat2(folderFd, temporary.c_str(), folderFd, name.c_str(), RENAME_EXCHANGE) == 0) {
        return DeleteItemTreeAt(folderFd, temporary.c_str());  // now the old item
    }
    if (errno != EINVAL && errno != ENOSYS) return Errno();
    // No exchange here: move the old item aside, put the copy in, and bring the old one back should
    // that fail.
    const std::string aside = TemporaryName();
    if (::renameat(folderFd, name.c_str(), folderFd, aside.c_str()) != 0) return Errno();
    if (::renameat(folderFd, temporary.c_str(), folderFd, name.c_str()) != 0) {
        const Status status = Errno();
        ::renameat(folderFd, aside.c_str(), folderFd, name.c_str());
        return status;
    }
    return DeleteItemTreeAt(folderFd, aside.c_str());
}

}  // namespace

Status CopyItemTree(const std::string& source, const std::string& target, bool replace) {
    if (source.size() < 2 || target.size() < 2 || source.front() != '/' || target.front() != '/') {
        return util::kBadParameter;
    }
    const PathParts from = SplitPath(source);
    const PathParts to = SplitPath(target);
    struct stat info {};
    if (::lstat(source.c_str(), &info) != 0) return Errno();
    // Only a folder can hold its own copy; a link is copied as a link, even one that leads nowhere
    // (broken, or in a loop), which has no real path at all.
    if (S_ISDIR(info.st_mode)) {
        const std::string realSource = RealPath(source);
        const std::string realTargetFolder = RealPath(to.folder);
        if (realSource.empty() || realTargetFolder.empty()) return Errno();
        if (IsAtOrInside(realTargetFolder, realSource)) return util::kBadParameter;
    }

    UniqueFd fromFolder(::open(from.folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!fromFolder.Valid()) return Errno();
    UniqueFd toFolder(::open(to.folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!toFolder.Valid()) return Errno();

    // The name carries our process id, so a name that is free now is ours to make and to remove.
    std::string temporary;
    for (int attempt = 0; attempt < 100 && temporary.empty(); ++attempt) {
        std::string candidate = TemporaryName();
        struct stat taken {};
        if (::fstatat(toFolder.Get(), candidate.c_str(), &taken, AT_SYMLINK_NOFOLLOW) != 0 && errno == ENOENT) {
            temporary = std::move(candidate);
        }
    }
    if (temporary.empty()) return util::kAlreadyExists;
    Status status = CopyEntry(fromFolder.Get(), from.name.c_str(), toFolder.Get(), temporary.c_str());
    if (status == kNoError) status = PutInPlace(toFolder.Get(), temporary, to.name, replace);
    if (status != kNoError) DeleteItemTreeAt(toFolder.Get(), temporary.c_str());
    return status;
}

}  // namespace vd::platform::fs
