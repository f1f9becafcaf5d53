#include "files/item_names.h"

#include "files/default_folder.h"
#include "files/file_operations.h"

namespace vd::files {

namespace {

constexpr const char* kNotAPath = "Not a file path reference";

}  // namespace

std::string ClimbLevels(std::string path, int32_t levels) {
    for (int32_t i = 0; i < levels && path != "/"; ++i) {
        const size_t slash = path.rfind('/');
        path = slash == 0 || slash == std::string::npos ? std::string("/") : path.substr(0, slash);
    }
    return path;
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

fmapi::Outcome GetDefaultFolder() { return Succeeded(DefaultFolder()); }

}  // namespace vd::files
