// Vandrel_DeleteItem's operation.
#include "files/default_folder.h"
#include "files/file_operations.h"
#include "files/kept_folders.h"
#include "util/status_codes.h"
#include "platform/fs/item_operations.h"
#include "platform/fs/tree_delete.h"

namespace vd::files {

fmapi::Outcome DeleteItem(const PathArgument& argument, bool folderFlag) {
    const ResolvedItem item = ResolveFilePath(argument, DefaultFolder());
    if (!item.Exists()) return FailedToResolve(item, "Source item not found");
    const std::string path = item.Path();
    if (const RemovalCheck check = CheckRemoval(path); check.status != util::kNoError || check.kept) {
        return check.kept ? Failed(kKeptFolderStatus, "Cannot delete the root, the home folder or a system folder")
                          : Failed(check.status, "DeleteItem failed");
    }
    // The item itself decides: a link to a folder is an alias file and goes without the flag, and
    // its folder is never entered.
    const platform::fs::ItemProbe itself = platform::fs::ProbeItemItself(path);
    if (itself.status != util::kNoError) return Failed(itself.status, "DeleteItem failed");
    if (!folderFlag && itself.kind == platform::fs::ItemKind::Folder) {
        return Failed(util::kNotAFile, "folderFlag must be set to delete a directory");
    }
    if (const util::Status status = platform::fs::DeleteItemTree(path); status != util::kNoError) {
        return Failed(status, "DeleteItem failed");
    }
    return Succeeded({}, &item);
}

}  // namespace vd::files
