// Vandrel_OpenItem's operation.
#include "files/default_folder.h"
#include "files/file_operations.h"
#include "platform/fs/default_application.h"

namespace vd::files {

fmapi::Outcome OpenItem(const PathArgument& argument) {
    const ResolvedItem item = ResolveFilePath(argument, DefaultFolder());
    if (!item.Exists()) return FailedToResolve(item, "OpenItem failed");
    // Whether the desktop then finds an application for it is not ours to report: a double-click
    // on a document no application opens is not the double-click's failure either.
    platform::fs::OpenWithDefaultApplication(item.Path());
    return Succeeded({}, &item);
}

}  // namespace vd::files
