// Vandrel_CreateAlias's operation.
#include "files/default_folder.h"
#include "files/file_operations.h"
#include "util/status_codes.h"
#include "platform/fs/item_operations.h"

namespace vd::files {

namespace {

constexpr const char* kFailed = "CreateAlias failed";

}  // namespace

fmapi::Outcome CreateAlias(const PathArgument& targetArgument, const PathArgument& aliasArgument) {
    const std::string base = DefaultFolder();
    const ResolvedItem target = ResolveFilePath(targetArgument, base);
    if (!target.Exists()) return FailedToResolve(target, "Source item not found");
    const ResolvedItem alias = ResolveFilePath(aliasArgument, base);
    if (alias.Exists()) return Failed(util::kAlreadyExists, kFailed);
    if (!alias.Located()) return FailedToResolve(alias, kFailed);
    // The absolute path, so the alias keeps working wherever it is moved to.
    if (const util::Status status = platform::fs::CreateSymbolicLink(target.Path(), alias.Path());
        status != util::kNoError) {
        return Failed(status, kFailed);
    }
    return Succeeded({}, &target);
}

}  // namespace vd::files
