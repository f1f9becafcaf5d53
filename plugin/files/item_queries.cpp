// The operations that read about an item and change nothing: its information, its path and name,
// opening it in the desktop's application, and the default folder itself.
#include "files/default_folder.h"
#include "files/file_operations.h"
#include "files/item_report.h"
#include "platform/fs/default_application.h"

namespace vd::files {

namespace {

constexpr const char* kNotAPath = "Not a file path reference";

// The folder levels up from an absolute path; "/" is as far as it goes. Fewer than 1 level climbs
// nothing.
std::string ClimbLevels(std::string path, int32_t levels) {
    for (int32_t i = 0; i < levels && path != "/"; ++i) {
        const size_t slash = path.rfind('/');
        path = slash == 0 || slash == std::string::npos ? std::string("/") : path.substr(0, slash);
    }
    return path;
}

}  // namespace

fmapi::Outcome GetItemInfo(const PathArgument& argument) {
    const ResolvedItem item = ResolveFilePath(argument, DefaultFolder());
    if (!item.Exists()) return FailedToResolve(item, "ItemInfo failed");
    platform::fs::CatalogInfo info;
    if (const util::Status status = platform::fs::ReadCatalogInfo(item.Path(), info); status != util::kNoError) {
        return Failed(status, "ItemInfo failed");
    }
    return Succeeded(FormatItemReport(info), &item);
}

fmapi::Outcome GetPath(const PathArgument& argument, int32_t levels) {
    const ResolvedItem item = ResolveFilePath(argument, DefaultFolder());
    // A path to an item that does not exist yet is still a path.
    if (!item.Located()) return FailedToResolve(item, kNotAPath);
    return Succeeded(ClimbLevels(item.Path(), levels), &item);
}

fmapi::Outcome GetName(const PathArgument& argument) {
    const ResolvedItem item = ResolveFilePath(argument, DefaultFolder());
    if (!item.Located()) return FailedToResolve(item, kNotAPath);
    const std::string path = item.Path();
    // The root has no name of its own: it is the boot volume, and answers as the volume.
    if (path == "/") return Succeeded(item.location.volumeName, &item);
    return Succeeded(path.substr(path.rfind('/') + 1), &item);
}

fmapi::Outcome OpenItem(const PathArgument& argument) {
    const ResolvedItem item = ResolveFilePath(argument, DefaultFolder());
    if (!item.Exists()) return FailedToResolve(item, "OpenItem failed");
    // Whether the desktop then finds an application for it is not ours to report: a double-click
    // on a document no application opens is not the double-click's failure either.
    platform::fs::OpenWithDefaultApplication(item.Path());
    return Succeeded({}, &item);
}

fmapi::Outcome GetDefaultFolder() { return Succeeded(DefaultFolder()); }

}  // namespace vd::files
