#include "platform/fs/item_probe.h"

#include <cerrno>

#include "util/status_codes.h"

#include <sys/stat.h>

namespace vd::platform::fs {

util::Status StatusFromErrno(int error) {
    switch (error) {
        case 0: return util::kNoError;
        case ENOENT:
        case ENOTDIR:
        case ELOOP: return util::kFileNotFound;
        case EACCES:
        case EPERM: return util::kPermissionDenied;
        case ENAMETOOLONG: return util::kBadName;
        case ENOMEM: return util::kMemoryFull;
        // Item operations meet these; each has a code users already know from the message table.
        case EEXIST:
        case ENOTEMPTY: return util::kAlreadyExists;
        case ENOSPC:
        case EDQUOT: return util::kDiskFull;
        case EROFS: return util::kDiskLocked;
        case EBUSY:
        case ETXTBSY: return util::kFileBusy;
        default: return util::kIoError;
    }
}

ItemProbe ProbeItem(const std::string& path) {
    struct stat info {};
    if (stat(path.c_str(), &info) == 0) {
        return ItemProbe{util::kNoError, S_ISDIR(info.st_mode) ? ItemKind::Folder : ItemKind::File};
    }
    const int error = errno;
    // A link that leads round in a circle leads nowhere, as a broken one does: there is nothing to
    // open behind it, and the link itself is still an item its folder holds.
    if (error == ENOENT || error == ENOTDIR || error == ELOOP) return ItemProbe{util::kNoError, ItemKind::Missing};
    return ItemProbe{StatusFromErrno(error), ItemKind::Missing};
}

}  // namespace vd::platform::fs
