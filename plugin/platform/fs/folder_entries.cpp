#include "platform/fs/folder_entries.h"

#include <algorithm>
#include <cerrno>
#include <new>
#include <system_error>
#include <thread>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>

#include "platform/fs/finder_info.h"
#include "platform/fs/item_probe.h"
#include "platform/common/unique_fd.h"

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

// Reading the attribute is a system call per entry and costs several times what reading the
// folder does; it is the one part of a listing that scales with the entries, so a large folder's
// entries are shared among a few threads. Each has its own reader (and finds out for itself that a
// file system keeps no attributes).
constexpr size_t kEntriesWorthAThread = 512;
constexpr unsigned kMostThreads = 4;

void ReadFinderFlags(const std::string& folder, const std::vector<std::string>& names, std::vector<uint16_t>& flags) {
    auto work = [&](size_t from, size_t to) {
        FinderFlagsReader reader(folder);
        for (size_t i = from; i < to; ++i)
            if (names[i][0] != '.') flags[i] = reader.FlagsOf(names[i].c_str());
    };
    const size_t count = names.size();
    const unsigned cores = std::max(1u, std::thread::hardware_concurrency());
    const size_t threads = std::min<size_t>({cores, kMostThreads, std::max<size_t>(1, count / kEntriesWorthAThread)});
    const size_t share = (count + threads - 1) / threads;
    std::vector<std::thread> helpers;
    size_t from = share;
    try {
        for (; from < count && helpers.size() + 1 < threads; from += share)
            helpers.emplace_back(work, from, std::min(count, from + share));
    } catch (const std::system_error&) {
        // No thread to be had: this one reads what no helper took.
    }
    work(0, std::min(count, share));
    if (from < count) work(from, count);
    for (auto& helper : helpers) helper.join();
}

}  // namespace

util::Status ReadFolderEntries(const std::string& folder, bool withFinderFlags,
                               const std::function<bool(const FolderEntry&)>& visit) {
    UniqueFd fd(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!fd.Valid()) return StatusFromErrno(errno);
    FolderStream stream(::fdopendir(fd.Get()));
    if (!stream) return StatusFromErrno(errno);
    const int folderFd = fd.Release();  // the stream owns it now

    // Without attributes each entry is passed on as it is read; with them the folder is read whole
    // first, so that the attributes can be read together.
    std::vector<std::string> names;
    std::vector<EntryKind> kinds;
    for (;;) {
        errno = 0;
        const dirent* entry = ::readdir(stream.get());
        if (!entry) {
            if (errno != 0) return StatusFromErrno(errno);
            break;
        }
        if (IsDotOrDotDot(entry->d_name)) continue;
        FolderEntry item;
        if (!KindOf(folderFd, *entry, item.kind)) continue;
        if (!withFinderFlags) {
            item.name = entry->d_name;
            if (!visit(item)) return util::kNoError;
            continue;
        }
        try {
            names.emplace_back(entry->d_name);
            kinds.push_back(item.kind);
        } catch (const std::bad_alloc&) {
            return util::kMemoryFull;
        }
    }
    if (names.empty()) return util::kNoError;
    std::vector<uint16_t> flags;
    try {
        flags.assign(names.size(), 0);
    } catch (const std::bad_alloc&) {
        return util::kMemoryFull;
    }
    ReadFinderFlags(folder, names, flags);
    for (size_t i = 0; i < names.size(); ++i)
        if (!visit(FolderEntry{names[i], kinds[i], flags[i]})) break;
    return util::kNoError;
}

}  // namespace vd::platform::fs
