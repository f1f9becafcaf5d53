// Deleting an item with everything inside it, as the Finder empties a folder: depth first, and a
// locked item (no owner write permission) is unlocked before it is emptied or removed.
#pragma once

#include <string>

#include "util/status_codes.h"

namespace vd::platform::fs {

// The item itself is deleted; a symbolic link is removed, never followed. The first failure stops
// the whole delete and is answered; what was deleted before it stays deleted, and the folders that
// remain get back the permissions the delete opened up.
util::Status DeleteItemTree(const std::string& path);

// The same for the entry name inside the open folder folderFd.
util::Status DeleteItemTreeAt(int folderFd, const char* name);

}  // namespace vd::platform::fs
