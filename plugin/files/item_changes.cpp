// The operations that change items: copy, move, rename, delete, new folders and aliases. Each
// resolves its paths against the default folder, refuses what would lose data or a kept folder, and
// answers the file system's refusal as its status.
#include "files/file_operations.h"

#include "files/default_folder.h"
#include "files/kept_folders.h"
#include "platform/fs/item_operations.h"
#include "platform/fs/item_probe.h"
#include "platform/fs/tree_copy.h"
#include "platform/fs/tree_delete.h"
#include "util/status_codes.h"

namespace vd::files {

namespace {

constexpr const char* kCopyFailed = "CopyItem failed";
constexpr const char* kRenameFailed = "RenameItem failed";
constexpr const char* kCreateFolderFailed = "CreateFolder failed";
constexpr const char* kCreateAliasFailed = "CreateAlias failed";

std::string LeafOf(const std::string& path) { return path.substr(path.rfind('/') + 1); }

}  // namespace

fmapi::Outcome CopyItem(const PathArgument& sourceArgument, const PathArgument& destinationArgument, bool replace) {
    const std::string base = DefaultFolder();
    const ResolvedItem source = ResolveFilePath(sourceArgument, base);
    if (!source.Exists()) return FailedToResolve(source, "Source item not found");
    const ResolvedItem destination = ResolveFilePath(destinationArgument, base);
    if (!destination.Located()) return FailedToResolve(destination, kCopyFailed);

    // Into an existing folder under the source's name; to the destination path itself when that
    // names a new item (or an existing file, which the copy may then replace).
    std::string target = destination.Path();
    const platform::fs::ItemProbe destinationKind = platform::fs::ProbeItem(target);
    if (destination.Exists() && destinationKind.kind == platform::fs::ItemKind::Folder) {
        target += (target == "/" ? "" : "/") + LeafOf(source.Path());
    }
    const platform::fs::ItemProbe existing = platform::fs::ProbeItemItself(target);
    if (existing.status != util::kNoError) return Failed(existing.status, kCopyFailed);
    if (existing.kind != platform::fs::ItemKind::Missing && !replace) {
        return Failed(util::kTargetExists, "Target file already exists and replace flag is false");
    }
    if (const util::Status status = platform::fs::CopyItemTree(source.Path(), target, replace);
        status != util::kNoError) {
        return Failed(status, kCopyFailed);
    }
    return Succeeded({}, &source);
}

fmapi::Outcome MoveItem(const PathArgument& sourceArgument, const PathArgument& destinationArgument) {
    const std::string base = DefaultFolder();
    const ResolvedItem source = ResolveFilePath(sourceArgument, base);
    if (!source.Exists()) return FailedToResolve(source, "Source item not found");
    if (const RemovalCheck check = CheckRemoval(source.Path()); check.status != util::kNoError || check.kept) {
        return check.kept ? Failed(kKeptFolderStatus, "Cannot move the root, the home folder or a system folder")
                          : Failed(check.status, "Source item not found");
    }
    const ResolvedItem destination = ResolveFilePath(destinationArgument, base);
    if (!destination.Exists()) return FailedToResolve(destination, "Destination folder not found");
    const platform::fs::ItemProbe probe = platform::fs::ProbeItem(destination.Path());
    if (probe.kind != platform::fs::ItemKind::Folder) {
        return Failed(util::kNotAFolder, "MoveItem requires destination directory, not file");
    }
    const std::string folder = destination.Path();
    // A move the file system refuses (an item of that name already there, another volume, a folder
    // into itself) has always reported nothing; scripts check for the item instead.
    platform::fs::RenameWithoutReplacing(source.Path(), folder + (folder == "/" ? "" : "/") + LeafOf(source.Path()));
    return Succeeded({}, &source);
}

fmapi::Outcome RenameItem(const PathArgument& argument, const std::string& newName) {
    const ResolvedItem item = ResolveFilePath(argument, DefaultFolder());
    if (!item.Exists()) return FailedToResolve(item, kRenameFailed);
    if (!platform::fs::IsUsableName(newName)) return Failed(util::kBadName, kRenameFailed);
    const std::string path = item.Path();
    // A renamed system folder is as gone to the system as a deleted one.
    if (const RemovalCheck check = CheckRemoval(path); check.status != util::kNoError || check.kept) {
        return check.kept ? Failed(kKeptFolderStatus, "Cannot rename the root, the home folder or a system folder")
                          : Failed(check.status, kRenameFailed);
    }
    const size_t slash = path.rfind('/');
    const std::string renamed = path.substr(0, slash + 1) + newName;
    if (renamed == path) return Succeeded({}, &item);
    if (const util::Status status = platform::fs::RenameWithoutReplacing(path, renamed); status != util::kNoError) {
        return Failed(status, kRenameFailed);
    }
    return Succeeded({}, &item);
}

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

fmapi::Outcome CreateFolder(const PathArgument& argument, const std::string& name) {
    const ResolvedItem parent = ResolveFilePath(argument, DefaultFolder());
    if (!parent.Exists()) return FailedToResolve(parent, kCreateFolderFailed);
    const platform::fs::ItemProbe probe = platform::fs::ProbeItem(parent.Path());
    if (probe.status != util::kNoError) return Failed(probe.status, kCreateFolderFailed);
    if (probe.kind != platform::fs::ItemKind::Folder) {
        return Failed(util::kNotAFolder, "CreateFolder requires destination directory, not file");
    }
    if (!platform::fs::IsUsableName(name)) return Failed(util::kBadName, kCreateFolderFailed);
    const std::string folder = parent.Path();
    const std::string path = folder + (folder == "/" ? "" : "/") + name;
    if (const util::Status status = platform::fs::CreateFolder(path); status != util::kNoError) {
        return Failed(status, kCreateFolderFailed);
    }
    return Succeeded({}, &parent);
}

fmapi::Outcome CreateAlias(const PathArgument& targetArgument, const PathArgument& aliasArgument) {
    const std::string base = DefaultFolder();
    const ResolvedItem target = ResolveFilePath(targetArgument, base);
    if (!target.Exists()) return FailedToResolve(target, "Source item not found");
    const ResolvedItem alias = ResolveFilePath(aliasArgument, base);
    if (alias.Exists()) return Failed(util::kAlreadyExists, kCreateAliasFailed);
    if (!alias.Located()) return FailedToResolve(alias, kCreateAliasFailed);
    // The absolute path, so the alias keeps working wherever it is moved to.
    if (const util::Status status = platform::fs::CreateSymbolicLink(target.Path(), alias.Path());
        status != util::kNoError) {
        return Failed(status, kCreateAliasFailed);
    }
    return Succeeded({}, &target);
}

}  // namespace vd::files
