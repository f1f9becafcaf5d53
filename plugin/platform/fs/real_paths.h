// Paths with the symbolic links on the way resolved, for decisions that must be about the item a
// path really reaches rather than about how it was spelt.
#pragma once

#include <string>

#include "util/status_codes.h"

namespace vd::platform::fs {

// Every link in the folders on the way resolved; the item itself is kept as named, as an operation
// on the item itself (delete, move, rename) would take it: a link is the link, not its target.
util::Status RealFolderPath(const std::string& absolutePath, std::string& resolved);

// Everything resolved, the item included; empty when it cannot be (missing, a loop, no permission).
std::string RealPath(const std::string& path);

}  // namespace vd::platform::fs
