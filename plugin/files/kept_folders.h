// The folders no file function deletes, moves away or renames, whatever path leads to them: the
// root, the folders directly under it, the user's home folder and the special folders that belong
// to the system rather than to the user's documents. A path taken from field data must not be able
// to wipe a machine.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "util/status_codes.h"

namespace vd::files {

// As the file system answers a folder we may not change.
inline constexpr util::Status kKeptFolderStatus = util::kPermissionDenied;

// Whether taking away the item at path (absolute, links on the way already resolved) would take a
// kept folder with it: the root, a folder directly under it, a kept folder, or a folder holding one.
bool IsKeptFolder(std::string_view path, const std::vector<std::string>& keptFolders);

// The home folder and the system's special folders (system, applications, preferences, temporary
// items, trash, the host's folder), each as named and as it really is. Nothing is made or changed.
std::vector<std::string> KeptFolders();

struct RemovalCheck {
    util::Status status = util::kNoError;  // the item's real path could not be found out
    bool kept = false;
};

// The decision for the item at path, once the links on the way to it are resolved: "/tmp/../etc"
// and "link-to-root/etc" are /etc. A link is the link itself, so removing a link to a kept folder
// is allowed: only the link goes.
RemovalCheck CheckRemoval(const std::string& path);

}  // namespace vd::files
