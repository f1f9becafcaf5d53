// Vandrel_MoveItem's operation.
#include "files/default_folder.h"
#include "files/file_operations.h"
#include "files/kept_folders.h"
#include "platform/fs/item_operations.h"

namespace vd::files {

namespace {

std::string LeafOf(const std::string& path) { return path.substr(path.rfind('/') + 1); }

}  // namespace

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

}  // namespace vd::files
