#include "files/default_folder.h"

#include <optional>

#include "platform/fs/special_folders.h"

namespace vd::files {

namespace {

// Touched on the host's main thread only, like the error object.
std::optional<std::string> gDefaultFolder;

}  // namespace

std::string DefaultFolder() {
    if (gDefaultFolder) return *gDefaultFolder;
    return platform::fs::UserHomeFolder().value_or("/");
}

void SetDefaultFolder(std::string absolutePath) { gDefaultFolder = std::move(absolutePath); }

}  // namespace vd::files
