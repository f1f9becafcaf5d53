#include "platform/fs/folder_entries.h"

#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>

#include "platform/fs/finder_info.h"
#include "platform/fs/item_probe.h"
#include "platform/fs/unique_fd.h"

namespace vd::platform::fs {

namespace {

bool IsDotOrDotDot(const char* name) {
    return name[0] == '.' && (name[1] == '\0' || (name[1] == '.' && name[2] == '\0'));
}

EntryKind KindFromMode(mode_t mode) {
    if (S_ISDIR(mode)) return EntryKind::Folder;
    if (S_ISLNK(mode)) return EntryKind::Link;
    if (S_ISREG(mode)) return EntryKind::File;
    return EntryKind::Other;
}

// Some file systems (and every one for old kernels' readdir) do not fill in d_type.
bool KindOf(int folderFd, const dirent& entry, EntryKind& kind) {
    switch (entry.d_type) {
        case DT_DIR: kind = EntryKind::Folder; return true;
        case DT_REG: kind = EntryKind::File; return true;
        case DT_LNK: kind = EntryKind::Link; return true;
        case DT_UNKNOWN: break;
        default: kind = EntryKind::Other; return true;
    }
    struct stat info {};
    if (::fstatat(folderFd, entry.d_name, &info, AT_SYMLINK_NOFOLLOW) != 0) return false;
    kind = KindFromMode(info.st_mode);
    return true;
}

// There is no "at" form of getxattr on the kernels we support, so the entry's path is built in one
// reused buffer. A file system that keeps no attributes says so once; then nobody asks again.
class FinderFlagsReader {
public:
    explicit FinderFlagsReader(const std::string& folder) : path_(folder) {
        if (path_.empty() || path_.back() != '/') path_ += '/';
        folderLength_ = path_.size();
    }

    uint16_t FlagsOf(const char* name) {
        if (unsupported_) return 0;
        path_.resize(folderLength_);
        path_ += name;
        unsigned char bytes[32];
        const ssize_t size = ::lgetxattr(path_.c_str(), kFinderInfoAttribute, bytes, sizeof bytes);
        if (size < 0) {
            if (errno == ENOTSUP) unsupported_ = true;
            if (errno == ERANGE) return ReadFinderInfo(path_).flags;
            return 0;
        }
        return DecodeFinderInfo(bytes, static_cast<size_t>(size)).flags;
    }

private:
    std::string path_;
    size_t folderLength_ = 0;
    bool unsupported_ = false;
};

}  // namespace

util::Status ReadFolderEntries(const std::string& folder, bool withFinderFlags,
                               const std::function<bool(const FolderEntry&)>& visit) {
    UniqueFd fd(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!fd.Valid()) return StatusFromErrno(errno);
    FolderStream stream(::fdopendir(fd.Get()));
    if (!stream) return StatusFromErrno(errno);
    const int folderFd = fd.Release();  // the stream owns it now

    FinderFlagsReader flags(folder);
    for (;;) {
        errno = 0;
        const dirent* entry = ::readdir(stream.get());
        if (!entry) {
            if (errno != 0) return StatusFromErrno(errno);
            return util::kNoError;
        }
        if (IsDotOrDotDot(entry->d_name)) continue;
        FolderEntry item;
        if (!KindOf(folderFd, *entry, item.kind)) continue;
        item.name = entry->d_name;
        if (withFinderFlags && entry->d_name[0] != '.') item.finderFlags = flags.FlagsOf(entry->d_name);
        if (!visit(item)) return util::kNoError;
    }
}

}  // namespace vd::platform::fs
