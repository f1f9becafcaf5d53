// Vandrel_SetDefaultFolder's operation.
#include "files/default_folder.h"
#include "files/file_operations.h"
#include "util/status_codes.h"
#include "platform/fs/item_probe.h"

namespace vd::files {

fmapi::Outcome SetDefaultFolderTo(const PathArgument& argument) {
    if (!argument.isText) return Failed(util::kNotText, "Parameter (path) must be text");
    // Resolved against the folder it replaces, so "..", "sub" and ".U" all start from there; the
    // old folder stays unless the new one is a folder.
    const ResolvedItem item = ResolveFilePath(argument, DefaultFolder());
    if (item.Exists()) {
        const platform::fs::ItemProbe probe = platform::fs::ProbeItem(item.Path());
        if (probe.kind == platform::fs::ItemKind::Folder) {
            SetDefaultFolder(item.Path());
            return Succeeded({});
        }
        if (probe.status == util::kNoError) return Failed(util::kNoError, "Not a directory path");
        return Failed(probe.status, "Failed to set default path");
    }
    // The detail is empty when the user cancelled; else it says why no dialog came.
    if (item.status == util::kUserCancelled) return Failed(util::kNoError, "Cancel", item.detail);
    return FailedToResolve(item, "Failed to set default path");
}

}  // namespace vd::files
