#include "platform/fs/tree_delete.h"

#include <cerrno>
#include <string>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>

#include "platform/fs/item_probe.h"
#include "platform/fs/unique_fd.h"

namespace vd::platform::fs {

namespace {

constexpr mode_t kOwnerAll = S_IRUSR | S_IWUSR | S_IXUSR;

struct ChildEntry {
    std::string name;
    bool isFolder;
};

// A locked folder cannot be emptied (its entries cannot be unlinked) and one without read or search
// permission cannot even be opened, so the owner's permissions come back before anything else.
UniqueFd OpenFolderUnlocked(int parentFd, const char* name, util::Status& status) {
    constexpr int kFlags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;
    UniqueFd fd(::openat(parentFd, name, kFlags));
    if (!fd.Valid() && errno == EACCES) {
        struct stat info {};
        if (::fstatat(parentFd, name, &info, AT_SYMLINK_NOFOLLOW) == 0 &&
            ::fchmodat(parentFd, name, (info.st_mode & 07777) | kOwnerAll, 0) == 0) {
            fd = UniqueFd(::openat(parentFd, name, kFlags));
        }
    }
    if (!fd.Valid()) {
        status = StatusFromErrno(errno);
        return fd;
    }
    struct stat info {};
    if (::fstat(fd.Get(), &info) != 0) {
        status = StatusFromErrno(errno);
        return UniqueFd();
    }
    if ((info.st_mode & kOwnerAll) != kOwnerAll && ::fchmod(fd.Get(), (info.st_mode & 07777) | kOwnerAll) != 0) {
        status = StatusFromErrno(errno);
        return UniqueFd();
    }
    status = util::kNoError;
    return fd;
}

// The folder's names are read in full before any is removed: removing entries while the stream is
// still being read may make some file systems skip entries.
util::Status ReadChildren(int folderFd, std::vector<ChildEntry>& children) {
    UniqueFd streamFd(::dup(folderFd));
    if (!streamFd.Valid()) return StatusFromErrno(errno);
    FolderStream stream(::fdopendir(streamFd.Get()));
    if (!stream) return StatusFromErrno(errno);
    streamFd.Release();
    for (;;) {
        errno = 0;
        const dirent* entry = ::readdir(stream.get());
        if (!entry) return errno == 0 ? util::kNoError : StatusFromErrno(errno);
        const char* n = entry->d_name;
        if (n[0] == '.' && (n[1] == '\0' || (n[1] == '.' && n[2] == '\0'))) continue;
        bool isFolder = entry->d_type == DT_DIR;
        if (entry->d_type == DT_UNKNOWN) {
            struct stat info {};
            if (::fstatat(folderFd, n, &info, AT_SYMLINK_NOFOLLOW) != 0) {
                if (errno == ENOENT) continue;
                return StatusFromErrno(errno);
            }
            isFolder = S_ISDIR(info.st_mode);
        }
        children.push_back(ChildEntry{n, isFolder});
    }
}

util::Status EmptyFolder(int folderFd) {
    std::vector<ChildEntry> children;
    if (const util::Status status = ReadChildren(folderFd, children); status != util::kNoError) return status;
    for (const ChildEntry& child : children) {
        if (child.isFolder) {
            util::Status status = util::kNoError;
            UniqueFd childFd = OpenFolderUnlocked(folderFd, child.name.c_str(), status);
            if (!childFd.Valid()) return status;
            if ((status = EmptyFolder(childFd.Get())) != util::kNoError) return status;
        }
        if (::unlinkat(folderFd, child.name.c_str(), child.isFolder ? AT_REMOVEDIR : 0) != 0) {
            return StatusFromErrno(errno);
        }
    }
    return util::kNoError;
}

}  // namespace

util::Status DeleteItemTreeAt(int folderFd, const char* name) {
    struct stat info {};
    if (::fstatat(folderFd, name, &info, AT_SYMLINK_NOFOLLOW) != 0) return StatusFromErrno(errno);
    const bool isFolder = S_ISDIR(info.st_mode);
    if (isFolder) {
        util::Status status = util::kNoError;
        UniqueFd fd = OpenFolderUnlocked(folderFd, name, status);
        if (!fd.Valid()) return status;
        if ((status = EmptyFolder(fd.Get())) != util::kNoError) return status;
    }
    if (::unlinkat(folderFd, name, isFolder ? AT_REMOVEDIR : 0) != 0) return StatusFromErrno(errno);
    return util::kNoError;
}

util::Status DeleteItemTree(const std::string& path) {
    const size_t slash = path.rfind('/');
    if (path.empty() || slash == std::string::npos || slash + 1 == path.size()) return util::kBadParameter;
    const std::string parent = slash == 0 ? std::string("/") : path.substr(0, slash);
    UniqueFd parentFd(::open(parent.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!parentFd.Valid()) return StatusFromErrno(errno);
    return DeleteItemTreeAt(parentFd.Get(), path.c_str() + slash + 1);
}

}  // namespace vd::platform::fs
