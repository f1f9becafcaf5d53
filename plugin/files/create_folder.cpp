// Vandrel_CreateFolder's operation.
#include "files/default_folder.h"
#include "files/file_operations.h"
#include "platform/fs/item_operations.h"

namespace vd::files {

namespace {

constexpr const char* kFailed = "CreateFolder failed";

}  // namespace

fmapi::Outcome CreateFolder(const PathArgument& argument, const std::string& name) {
    const ResolvedItem parent = ResolveFilePath(argument, DefaultFolder());
    if (!parent.Exists()) return FailedToResolve(parent, kFailed);
    const platform::fs::ItemProbe probe = platform::fs::ProbeItem(parent.Path());
    if (probe.status != util::kNoError) return Failed(probe.status, kFailed);
    if (probe.kind != platform::fs::ItemKind::Folder) {
        return Failed(util::kNotAFolder, "CreateFolder requires destination directory, not file");
    }
    if (!platform::fs::IsUsableName(name)) return Failed(util::kBadName, kFailed);
    const std::string folder = parent.Path();
    const std::string path = folder + (folder == "/" ? "" : "/") + name;
    if (const util::Status status = platform::fs::CreateFolder(path); status != util::kNoError) {
        return Failed(status, kFailed);
    }
    return Succeeded({}, &parent);
}

}  // namespace vd::files
