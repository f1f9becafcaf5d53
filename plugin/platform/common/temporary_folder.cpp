#include "platform/common/temporary_folder.h"

#include <cerrno>
#include <cstdlib>

#include <sys/stat.h>
#include <unistd.h>

#include "platform/common/posix_status.h"
#include "util/folder_walk.h"

namespace vd::platform {

namespace {

std::string TemporaryItemsBase() {
    const char* value = std::getenv("TMPDIR");
    if (!value || value[0] != '/') return "/tmp";  // a relative value is no place to put files
    return util::NormalizeAbsolutePath(value);
}

}  // namespace

std::string TemporaryFolderPath() { return TemporaryItemsBase() + "/vandrel-" + std::to_string(::getuid()); }

// The private temporary folder must not be a place another user prepared for us: a link, a folder
// of someone else's, or one others may write into would let them read or swap our files.
util::Status MakeTemporaryFolder(std::string& path) {
    path = TemporaryFolderPath();
    if (::mkdir(path.c_str(), 0700) != 0 && errno != EEXIST) {
        if (errno != ENOENT) return StatusFromErrno(errno);
        if (const util::Status status = MakeFolders(TemporaryItemsBase(), 0777); status != util::kNoError) return status;
        if (::mkdir(path.c_str(), 0700) != 0 && errno != EEXIST) return StatusFromErrno(errno);
    }
    struct stat info {};
    if (::lstat(path.c_str(), &info) != 0) return StatusFromErrno(errno);
    if (!S_ISDIR(info.st_mode) || info.st_uid != ::getuid() || (info.st_mode & 077) != 0) {
        return util::kPermissionDenied;
    }
    return util::kNoError;
}

}  // namespace vd::platform
