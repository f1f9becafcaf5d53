// The file functions' operations, one per function: each takes the arguments as read and answers
// the outcome. Paths go through the file-function resolver against the default folder.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "files/file_outcome.h"
#include "files/path_argument.h"

namespace vd::files {

fmapi::Outcome SetDefaultFolderTo(const PathArgument& path);
fmapi::Outcome GetDefaultFolder();
fmapi::Outcome CopyItem(const PathArgument& source, const PathArgument& destination, bool replace);
fmapi::Outcome MoveItem(const PathArgument& source, const PathArgument& destinationFolder);
fmapi::Outcome DeleteItem(const PathArgument& item, bool folderFlag);
fmapi::Outcome RenameItem(const PathArgument& item, const std::string& newName);
fmapi::Outcome CreateFolder(const PathArgument& enclosingFolder, const std::string& name);
fmapi::Outcome ListFolder(const PathArgument& folder, bool listAll);
fmapi::Outcome GetItemInfo(const PathArgument& item);
fmapi::Outcome CreateAlias(const PathArgument& target, const PathArgument& alias);
fmapi::Outcome OpenItem(const PathArgument& item);
fmapi::Outcome ListDisks();
fmapi::Outcome GetPath(const PathArgument& item, int32_t levels);
fmapi::Outcome GetName(const PathArgument& item);

// Vandrel_ListDisks' text: the names joined by "|", as many whole names as fit in the 500 bytes the
// list has always had (terminator included); the rest are left off, so that scripts that split it
// never get a part of a name.
std::string JoinDiskNames(const std::vector<std::string>& names);

}  // namespace vd::files
