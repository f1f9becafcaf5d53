// Vandrel_CopyItem's operation.
#include "files/default_folder.h"
#include "files/file_operations.h"
#include "platform/fs/item_probe.h"
#include "platform/fs/item_operations.h"
#include "platform/fs/tree_copy.h"

namespace vd::files {

namespace {

constexpr const char* kFailed = "CopyItem failed";

std::string LeafOf(const std::string& path) { return path.substr(path.rfind('/') + 1); }

}  // namespace

fmapi::Outcome CopyItem(const PathArgument& sourceArgument, const PathArgument& destinationArgument, bool replace) {
    const std::string base = DefaultFolder();
    const ResolvedItem source = ResolveFilePath(sourceArgument, base);
    if (!source.Exists()) return FailedToResolve(source, "Source item not found");
    const ResolvedItem destination = ResolveFilePath(destinationArgument, base);
    if (!destination.Located()) return FailedToResolve(destination, kFailed);

    // Into an existing folder under the source's name; to the destination path itself when that
    // names a new item (or an existing file, which the copy may then replace).
    std::string target = destination.Path();
    const platform::fs::ItemProbe destinationKind = platform::fs::ProbeItem(target);
    if (destination.Exists() && destinationKind.kind == platform::fs::ItemKind::Folder) {
        target += (target == "/" ? "" : "/") + LeafOf(source.Path());
    }
    const platform::fs::ItemProbe existing = platform::fs::ProbeItemItself(target);
    if (existing.status != util::kNoError) return Failed(existing.status, kFailed);
    if (existing.kind != platform::fs::ItemKind::Missing && !replace) {
        return Failed(util::kTargetExists, "Target file already exists and replace flag is false");
    }
    if (const util::Status status = platform::fs::CopyItemTree(source.Path(), target, replace);
        status != util::kNoError) {
        return Failed(status, kFailed);
    }
    return Succeeded({}, &source);
}

}  // namespace vd::files
