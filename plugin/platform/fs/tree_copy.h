// Copying an item, a folder with everything inside it, with what makes it the same item to a Mac
// user: data, permissions, modification time, Finder information and resource fork.
#pragma once

#include <string>

#include "util/status_codes.h"

namespace vd::platform::fs {

// Copies source to target (both absolute). The copy is built under a hidden temporary name next to
// the target and put in place only when it is complete, so the target is either the whole copy or
// untouched; a failed copy removes everything it made. An existing target is replaced only when
// replace is set (else -48). Symbolic links are copied as links. A folder cannot be copied into
// itself (-50), nor can devices, sockets and pipes (-50).
util::Status CopyItemTree(const std::string& source, const std::string& target, bool replace);

}  // namespace vd::platform::fs
