// The folder that holds the plug-in's temporary files: $TMPDIR/vandrel-<uid>, else
// /tmp/vandrel-<uid>, private to this user.
#pragma once

#include <string>

#include "util/status_codes.h"

namespace vd::platform {

std::string TemporaryFolderPath();

// The folder, made when missing. Refused (-54) when it is not this user's alone.
util::Status MakeTemporaryFolder(std::string& path);

}  // namespace vd::platform
