// The code for an errno from a file-system call: the one place where errno becomes a status, so a
// refusal reads the same whichever part of the plug-in met it.
#pragma once

#include <string>

#include <sys/types.h>

#include "util/status_codes.h"

namespace vd::platform {

util::Status StatusFromErrno(int error);

// mkdir -p: every missing folder on the way is made with mode (umask applies, as it does in a shell).
util::Status MakeFolders(const std::string& path, mode_t mode);

}  // namespace vd::platform
