// The file functions' operations, one per function: each takes the arguments as read and answers
// the outcome. Paths go through the file-function resolver against the default folder.
#pragma once

#include <cstdint>
#include <string>

#include "files/file_outcome.h"
#include "files/path_argument.h"

namespace vd::files {

FileOutcome SetDefaultFolderTo(const PathArgument& path);
FileOutcome GetDefaultFolder();
FileOutcome CopyItem(const PathArgument& source, const PathArgument& destination, bool replace);
FileOutcome MoveItem(const PathArgument& source, const PathArgument& destinationFolder);
FileOutcome DeleteItem(const PathArgument& item, bool folderFlag);
FileOutcome RenameItem(const PathArgument& item, const std::string& newName);
FileOutcome CreateFolder(const PathArgument& enclosingFolder, const std::string& name);
FileOutcome ListFolder(const PathArgument& folder, bool listAll);
FileOutcome GetItemInfo(const PathArgument& item);
FileOutcome CreateAlias(const PathArgument& target, const PathArgument& alias);
FileOutcome OpenItem(const PathArgument& item);
FileOutcome ListDisks();
FileOutcome GetPath(const PathArgument& item, int32_t levels);
FileOutcome GetName(const PathArgument& item);

}  // namespace vd::files
