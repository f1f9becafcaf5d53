#include "sound/delete_file.h"

#include <cerrno>

#include <sys/stat.h>
#include <unistd.h>

namespace vd::sound {

media::Status DeleteFile(const std::string& path) {
    struct stat info {};
    if (::lstat(path.c_str(), &info) != 0) return media::StatusFromErrno(errno, media::MediaStep::kWriting);
    if (S_ISDIR(info.st_mode)) return media::MediaFailure(util::kNotAFile, path + " is a folder");
    if (::unlink(path.c_str()) != 0) return media::StatusFromErrno(errno, media::MediaStep::kWriting);
    return util::kNoError;
}

}  // namespace vd::sound
