// Vandrel_GetItemInfo's operation.
#include "files/default_folder.h"
#include "files/file_operations.h"
#include "files/item_report.h"

namespace vd::files {

fmapi::Outcome GetItemInfo(const PathArgument& argument) {
    const ResolvedItem item = ResolveFilePath(argument, DefaultFolder());
    if (!item.Exists()) return FailedToResolve(item, "ItemInfo failed");
    platform::fs::CatalogInfo info;
    if (const util::Status status = platform::fs::ReadCatalogInfo(item.Path(), info); status != util::kNoError) {
        return Failed(status, "ItemInfo failed");
    }
    return Succeeded(FormatItemReport(info), &item);
}

}  // namespace vd::files
