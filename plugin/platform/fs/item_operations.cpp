#include "platform/fs/item_operations.h"

#include <cerrno>

#include <fcntl.h>
#include <linux/fs.h>
#include <stdio.h>
#include <sys/stat.h>
#include <unistd.h>

#include "util/status_codes.h"

namespace vd::platform::fs {

namespace {

constexpr size_t kLongestName = 255;  // NAME_MAX of every Linux file system we meet

}  // namespace

ItemProbe ProbeItemItself(const std::string& path) {
    struct stat info {};
    if (::lstat(path.c_str(), &info) == 0) {
        return ItemProbe{util::kNoError, S_ISDIR(info.st_mode) ? ItemKind::Folder : ItemKind::File};
    }
    const int error = errno;
    if (error == ENOENT || error == ENOTDIR) return ItemProbe{util::kNoError, ItemKind::Missing};
    return ItemProbe{StatusFromErrno(error), ItemKind::Missing};
}

bool IsUsableName(std::string_view name) {
    return !name.empty() && name.size() <= kLongestName && name != "." && name != ".." &&
           name.find('/') == std::string_view::npos && name.find('\0') == std::string_view::npos;
}

util::Status CreateFolder(const std::string& path) {
    if (::mkdir(path.c_str(), 0777) != 0) return StatusFromErrno(errno);
    return util::kNoError;
}

util::Status RenameWithoutReplacing(const std::string& from, const std::string& to) {
    if (::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) return util::kNoError;
    if (errno != EINVAL && errno != ENOSYS) return StatusFromErrno(errno);
    // File systems without the no-replace rename (some network ones): check, then rename. Another
    // process could slip in between; on those file systems nothing closes that gap.
    if (ProbeItemItself(to).kind != ItemKind::Missing) return util::kAlreadyExists;
    if (::rename(from.c_str(), to.c_str()) != 0) return StatusFromErrno(errno);
    return util::kNoError;
}

util::Status CreateSymbolicLink(const std::string& target, const std::string& linkPath) {
    if (::symlink(target.c_str(), linkPath.c_str()) != 0) return StatusFromErrno(errno);
    return util::kNoError;
}

}  // namespace vd::platform::fs
