// Vandrel_RenameItem's operation.
#include "files/default_folder.h"
#include "files/file_operations.h"
#include "files/kept_folders.h"
#include "platform/fs/item_operations.h"

namespace vd::files {

namespace {

constexpr const char* kFailed = "RenameItem failed";

}  // namespace

fmapi::Outcome RenameItem(const PathArgument& argument, const std::string& newName) {
    const ResolvedItem item = ResolveFilePath(argument, DefaultFolder());
    if (!item.Exists()) return FailedToResolve(item, kFailed);
    if (!platform::fs::IsUsableName(newName)) return Failed(util::kBadName, kFailed);
    const std::string path = item.Path();
    // A renamed system folder is as gone to the system as a deleted one.
    if (const RemovalCheck check = CheckRemoval(path); check.status != util::kNoError || check.kept) {
        return check.kept ? Failed(kKeptFolderStatus, "Cannot rename the root, the home folder or a system folder")
                          : Failed(check.status, kFailed);
    }
    const size_t slash = path.rfind('/');
    const std::string renamed = path.substr(0, slash + 1) + newName;
    if (renamed == path) return Succeeded({}, &item);
    if (const util::Status status = platform::fs::RenameWithoutReplacing(path, renamed); status != util::kNoError) {
        return Failed(status, kFailed);
    }
    return Succeeded({}, &item);
}

}  // namespace vd::files
