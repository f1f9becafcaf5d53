#include "files/kept_folders.h"

#include <optional>

#include "platform/fs/real_paths.h"
#include "platform/fs/special_folders.h"

namespace vd::files {

namespace {

using platform::fs::SpecialFolder;

// The desktop and documents folders are the user's own, as any other folder of theirs.
constexpr SpecialFolder kSystemsFolders[] = {
    SpecialFolder::System,         SpecialFolder::Applications, SpecialFolder::Preferences,
    SpecialFolder::TemporaryItems, SpecialFolder::Trash,        SpecialFolder::HostFolder,
};

// The folder itself or one of the folders that hold it.
bool HoldsOrIs(std::string_view path, std::string_view folder) {
    return folder.starts_with(path) && (folder.size() == path.size() || folder[path.size()] == '/');
}

void AddBothForms(const std::string& folder, std::vector<std::string>& kept) {
    std::string named;
    if (platform::fs::RealFolderPath(folder, named) == util::kNoError) kept.push_back(named);
    else kept.push_back(folder);
    if (std::string real = platform::fs::RealPath(folder); !real.empty() && real != kept.back()) {
        kept.push_back(std::move(real));
    }
}

}  // namespace

bool IsKeptFolder(std::string_view path, const std::vector<std::string>& keptFolders) {
    if (path.empty() || path == "/") return true;
    // "/usr", "/home", "/etc": nothing directly under the root is any one script's to take away.
    if (path.find('/', 1) == std::string_view::npos) return true;
    for (const std::string& folder : keptFolders) {
        if (HoldsOrIs(path, folder)) return true;
    }
    return false;
}

std::vector<std::string> KeptFolders() {
    std::vector<std::string> kept;
    if (const std::optional<std::string> home = platform::fs::UserHomeFolder()) AddBothForms(*home, kept);
    for (const SpecialFolder folder : kSystemsFolders) {
        std::string path;
        if (platform::fs::LocateSpecialFolder(folder, path) == util::kNoError) AddBothForms(path, kept);
    }
    return kept;
}

RemovalCheck CheckRemoval(const std::string& path) {
    RemovalCheck check;
    std::string real;
    check.status = platform::fs::RealFolderPath(path, real);
    if (check.status != util::kNoError) return check;
    check.kept = IsKeptFolder(real, KeptFolders());
    return check;
}

}  // namespace vd::files
