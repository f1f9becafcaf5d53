#include "platform/common/posix_status.h"

#include <cerrno>

#include <sys/stat.h>

namespace vd::platform {

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

util::Status MakeFolders(const std::string& path, mode_t mode) {
    struct stat info {};
    if (::stat(path.c_str(), &info) == 0) return S_ISDIR(info.st_mode) ? util::kNoError : util::kNotAFolder;
    if (errno != ENOENT) return StatusFromErrno(errno);
    const size_t slash = path.rfind('/');
    if (slash != std::string::npos && slash > 0) {
        if (const util::Status status = MakeFolders(path.substr(0, slash), 0777); status != util::kNoError) {
            return status;
        }
    }
    if (::mkdir(path.c_str(), mode) != 0 && errno != EEXIST) return StatusFromErrno(errno);
    return util::kNoError;
}

}  // namespace vd::platform
