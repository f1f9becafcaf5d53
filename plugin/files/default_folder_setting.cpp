// Vandrel_SetDefaultFolder's operation.
#include "files/default_folder.h"
#include "files/file_operations.h"
#include "util/status_codes.h"
#include "platform/fs/item_probe.h"

namespace vd::files {

namespace {

constexpr util::Status kNotText = 20102;

}  // namespace

FileOutcome SetDefaultFolderTo(const PathArgument& argument) {
    if (!argument.isText) return Failed(kNotText, "Parameter (path) must be text");
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
    if (item.status == util::kUserCancelled) {
        FileOutcome cancelled = Failed(util::kNoError, "Cancel");
        cancelled.detail = item.detail;  // empty when the user cancelled; else why no dialog came
        return cancelled;
    }
    return FailedToResolve(item, "Failed to set default path");
}

}  // namespace vd::files
