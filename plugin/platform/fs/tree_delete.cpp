#include "platform/fs/tree_delete.h"

#include <cerrno>
#include <string>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>

#include "platform/fs/item_probe.h"
#include "platform/common/unique_fd.h"

namespace vd::platform::fs {

namespace {

constexpr mode_t kOwnerAll = S_IRUSR | S_IWUSR | S_IXUSR;

struct ChildEntry {
    std::string name;
    bool isFolder;
};

// A folder whose permissions the delete opened up. Should the delete stop before the folder is
// gone, the folder gets its own permissions back: what a failed delete leaves is as it was.
class UnlockedFolder {
public:
    UnlockedFolder() = default;
    UnlockedFolder(UniqueFd fd, mode_t originalMode, bool modeChanged)
        : fd_(std::move(fd)), originalMode_(originalMode), modeChanged_(modeChanged) {}
    UnlockedFolder(UnlockedFolder&&) = default;
    UnlockedFolder& operator=(UnlockedFolder&&) = delete;
    ~UnlockedFolder() {
        if (modeChanged_ && fd_.Valid()) ::fchmod(fd_.Get(), originalMode_);
    }

    bool Valid() const { return fd_.Valid(); }
    int Get() const { return fd_.Get(); }
    void Removed() { modeChanged_ = false; }

private:
    UniqueFd fd_;
    mode_t originalMode_ = 0;
    bool modeChanged_ = false;
};

// A locked folder cannot be emptied (its entries cannot be unlinked) and one without read or search
// permission cannot even be opened, so the owner's permissions come back before anything else.
UnlockedFolder OpenFolderUnlocked(int parentFd, const char* name, util::Status& status) {
    constexpr int kFlags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;
    UniqueFd fd(::openat(parentFd, name, kFlags));
    struct stat info {};
    if (!fd.Valid() && errno == EACCES && ::fstatat(parentFd, name, &info, AT_SYMLINK_NOFOLLOW) == 0 &&
        ::fchmodat(parentFd, name, (info.st_mode & 07777) | kOwnerAll, 0) == 0) {
        fd = UniqueFd(::openat(parentFd, name, kFlags));
        if (!fd.Valid()) {
            status = StatusFromErrno(errno);
            ::fchmodat(parentFd, name, info.st_mode & 07777, 0);
            return UnlockedFolder();
        }
        status = util::kNoError;
        return UnlockedFolder(std::move(fd), info.st_mode & 07777, true);
    }
    if (!fd.Valid() || ::fstat(fd.Get(), &info) != 0) {
        status = StatusFromErrno(errno);
        return UnlockedFolder();
    }
    const bool locked = (info.st_mode & kOwnerAll) != kOwnerAll;
    if (locked && ::fchmod(fd.Get(), (info.st_mode & 07777) | kOwnerAll) != 0) {
        status = StatusFromErrno(errno);
        return UnlockedFolder();
    }
    status = util::kNoError;
    return UnlockedFolder(std::move(fd), info.st_mode & 07777, locked);
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

util::Status DeleteFolderAt(int parentFd, const char* name);

util::Status EmptyFolder(int folderFd) {
    std::vector<ChildEntry> children;
    if (const util::Status status = ReadChildren(folderFd, children); status != util::kNoError) return status;
    for (const ChildEntry& child : children) {
        if (child.isFolder) {
            if (const util::Status status = DeleteFolderAt(folderFd, child.name.c_str()); status != util::kNoError) {
                return status;
            }
        } else if (::unlinkat(folderFd, child.name.c_str(), 0) != 0) {
            return StatusFromErrno(errno);
        }
    }
    return util::kNoError;
}

util::Status DeleteFolderAt(int parentFd, const char* name) {
    util::Status status = util::kNoError;
    UnlockedFolder folder = OpenFolderUnlocked(parentFd, name, status);
    if (!folder.Valid()) return status;
    if ((status = EmptyFolder(folder.Get())) != util::kNoError) return status;
    if (::unlinkat(parentFd, name, AT_REMOVEDIR) != 0) return StatusFromErrno(errno);
    folder.Removed();
    return util::kNoError;
}

}  // namespace

util::Status DeleteItemTreeAt(int folderFd, const char* name) {
    struct stat info {};
    if (::fstatat(folderFd, name, &info, AT_SYMLINK_NOFOLLOW) != 0) return StatusFromErrno(errno);
    if (S_ISDIR(info.st_mode)) return DeleteFolderAt(folderFd, name);
    if (::unlinkat(folderFd, name, 0) != 0) return StatusFromErrno(errno);
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
