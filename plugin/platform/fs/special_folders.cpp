#include "platform/fs/special_folders.h"

#include <cerrno>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <vector>

#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/common/posix_status.h"
#include "platform/common/temporary_folder.h"
#include "platform/fs/item_probe.h"
#include "util/folder_walk.h"

namespace vd::platform::fs {

namespace {

std::optional<std::string> AbsoluteVariable(const char* name) {
    const char* value = std::getenv(name);
    if (!value || value[0] != '/') return std::nullopt;  // XDG says relative values are ignored
    return util::NormalizeAbsolutePath(value);
}

std::string ReadSmallFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::string text;
    constexpr size_t kCap = 64 * 1024;  // a user-dirs file is a few hundred bytes
    char c;
    while (text.size() < kCap && in.get(c)) text.push_back(c);
    return text;
}

std::optional<std::string> XdgUserFolder(std::string_view key, const std::string& home) {
    std::string config = AbsoluteVariable("XDG_CONFIG_HOME").value_or(home + "/.config");
    return UserDirFromConfig(ReadSmallFile(config + "/user-dirs.dirs"), key, home);
}

util::Status HomeBased(const std::string& relative, std::string& path) {
    const std::optional<std::string> home = UserHomeFolder();
    if (!home) return util::kFolderNotFound;
    path = util::NormalizeAbsolutePath(*home + "/" + relative);
    return util::kNoError;
}

util::Status UserFolder(std::string_view key, const char* fallbackName, std::string& path) {
    const std::optional<std::string> home = UserHomeFolder();
    if (!home) return util::kFolderNotFound;
    path = XdgUserFolder(key, *home).value_or(util::NormalizeAbsolutePath(*home + "/" + fallbackName));
    return util::kNoError;
}

util::Status ProgramFolder(std::string& path) {
    std::vector<char> buffer(4096);
    const ssize_t size = ::readlink("/proc/self/exe", buffer.data(), buffer.size());
    if (size <= 0 || static_cast<size_t>(size) >= buffer.size()) return util::kFileNotFound;
    std::string program(buffer.data(), static_cast<size_t>(size));
    const size_t slash = program.rfind('/');
    path = slash == 0 || slash == std::string::npos ? std::string("/") : program.substr(0, slash);
    return util::kNoError;
}

}  // namespace

std::optional<std::string> UserHomeFolder() {
    if (const char* home = std::getenv("HOME"); home && home[0] == '/') return util::NormalizeAbsolutePath(home);
    std::vector<char> buffer(16 * 1024);
    passwd entry {};
    passwd* found = nullptr;
    if (::getpwuid_r(::getuid(), &entry, buffer.data(), buffer.size(), &found) == 0 && found && found->pw_dir &&
        found->pw_dir[0] == '/') {
        return util::NormalizeAbsolutePath(found->pw_dir);
    }
    return std::nullopt;
}

std::optional<std::string> UserDirFromConfig(std::string_view text, std::string_view key, const std::string& home) {
    std::optional<std::string> found;
    while (!text.empty()) {
        const size_t end = text.find('\n');
        std::string_view line = text.substr(0, end);
        text = end == std::string_view::npos ? std::string_view() : text.substr(end + 1);
        while (!line.empty() && (line.front() == ' ' || line.front() == '\t')) line.remove_prefix(1);
        if (!line.starts_with(key) || line.substr(key.size(), 2) != "=\"") continue;
        line.remove_prefix(key.size() + 2);
        const size_t close = line.rfind('"');
        if (close == std::string_view::npos) continue;
        line = line.substr(0, close);
        std::string value;
        for (size_t i = 0; i < line.size(); ++i) {
            if (line[i] == '\\' && i + 1 < line.size()) ++i;  // the file's shell quoting
            value.push_back(line[i]);
        }
        // Only "$HOME/..." and absolute paths are allowed; "$HOME/" alone means the home folder,
        // which the desktop uses to say "no separate folder".
        if (value.starts_with("$HOME")) value = home + value.substr(5);
        if (value.empty() || value.front() != '/') continue;
        found = util::NormalizeAbsolutePath(value);  // the last assignment wins, as in the shell
    }
    return found;
}

util::Status LocateSpecialFolder(SpecialFolder folder, std::string& path) {
    switch (folder) {
        case SpecialFolder::Applications: path = "/usr/share/applications"; return util::kNoError;
        case SpecialFolder::Desktop: return UserFolder("XDG_DESKTOP_DIR", "Desktop", path);
        case SpecialFolder::Documents: return UserFolder("XDG_DOCUMENTS_DIR", "Documents", path);
        case SpecialFolder::Preferences: {
            if (std::optional<std::string> config = AbsoluteVariable("XDG_CONFIG_HOME")) {
                path = *config;
                return util::kNoError;
            }
            return HomeBased(".config", path);
        }
        case SpecialFolder::Root: path = "/"; return util::kNoError;
        case SpecialFolder::System: path = "/etc"; return util::kNoError;
        case SpecialFolder::TemporaryItems:
            path = TemporaryFolderPath();
            return util::kNoError;
        case SpecialFolder::Trash: {
            std::string data;
            if (std::optional<std::string> xdg = AbsoluteVariable("XDG_DATA_HOME")) data = *xdg;
            else if (const util::Status status = HomeBased(".local/share", data); status != util::kNoError) {
                return status;
            }
            path = data + "/Trash/files";
            return util::kNoError;
        }
        case SpecialFolder::HostFolder: return ProgramFolder(path);
    }
    return util::kBadParameter;
}

util::Status FindSpecialFolder(SpecialFolder folder, std::string& path) {
    if (const util::Status status = LocateSpecialFolder(folder, path); status != util::kNoError) return status;
    switch (folder) {
        case SpecialFolder::Root:
        case SpecialFolder::HostFolder: return util::kNoError;
        case SpecialFolder::TemporaryItems: return MakeTemporaryFolder(path);
        // Settings and what the user threw away are nobody else's business.
        case SpecialFolder::Preferences:
        case SpecialFolder::Trash: return MakeFolders(path, 0700);
        case SpecialFolder::Applications:
        case SpecialFolder::System: return MakeFolders(path, 0755);
        case SpecialFolder::Desktop:
        case SpecialFolder::Documents: return MakeFolders(path, 0777);
    }
    return util::kBadParameter;
}

}  // namespace vd::platform::fs
