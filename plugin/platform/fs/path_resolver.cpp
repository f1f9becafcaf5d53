#include "platform/fs/path_resolver.h"

#include <new>
#include <stdexcept>

#include "platform/fs/volumes.h"
#include "util/home_folder.h"
#include "platform/fs/location_finisher.h"
#include "platform/fs/posix_path_converter.h"
#include "util/reference_prefix.h"
#include "platform/fs/relative_path_converter.h"
#include "platform/fs/windows_path_converter.h"

namespace vd::util {

namespace {

bool IsAsciiLetter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }

// "C:\..." only: "c:/x" is a relative name with a colon in it, as it always was.
bool IsDrivePath(std::string_view text) {
    return text.size() >= 3 && text[1] == ':' && text[2] == '\\' && IsAsciiLetter(text[0]);
}

bool IsNetworkPath(std::string_view text) { return text.size() > 1 && text.starts_with("\\\\"); }

// Windows hosts write absolute references as "imagewin:/C:/Pictures/a.jpg".
bool IsSlashDrivePath(std::string_view path) {
    return path.size() >= 3 && path[0] == '/' && IsAsciiLetter(path[1]) && path[2] == ':' &&
           (path.size() == 3 || path[3] == '/' || path[3] == '\\');
}

// Relative texts with a backslash were written on Windows, where "/" separates as well; texts
// without one use "/" and may hold any other character in a name.
std::string_view SeparatorsOf(std::string_view relativeText) {
    return relativeText.find('\\') != std::string_view::npos ? kWindowsSeparators : std::string_view("/");
}

Status DatabaseRelative(std::string_view text, bool relativeFlag, const std::string& baseFolder, std::string& target) {
    if (!relativeFlag) return kFolderNotFound;
    return ConvertRelativePath(text, SeparatorsOf(text), baseFolder, target);
}

Status HomeRelative(std::string_view rest, std::string& target) {
    const std::optional<std::string> home = HomeFolder();
    if (!home) return kMemoryFull;
    return ConvertRelativePath(rest, "/", *home, target);
}

Status PrefixedAbsolute(std::string_view path, const std::vector<platform::fs::Volume>& volumes,
                        ConvertedPath& converted) {
    if (IsSlashDrivePath(path)) {
        converted = ConvertedPath{};
        return ConvertDrivePath(path[1], path.substr(3), converted.target);
    }
    return ConvertPosixPath(path, volumes, converted);
}

Status Convert(std::string_view text, bool relativeFlag, const std::string& baseFolder,
               const std::vector<platform::fs::Volume>& volumes, ConvertedPath& converted) {
    if (IsDrivePath(text)) return ConvertDrivePath(text[0], text.substr(3), converted.target);
    if (IsNetworkPath(text)) return ConvertNetworkPath(text.substr(2), volumes, converted.target);
    if (text.size() > 1 && text.starts_with("~/")) return HomeRelative(text.substr(2), converted.target);
    if (text.front() == '/') return ConvertPosixPath(text, volumes, converted);

    const std::string_view word = ReferencePrefix(text);
    if (!word.empty()) {
        const std::string_view rest = text.substr(word.size());
        if (rest.size() > 2 && rest.front() == ':') {
            const std::string_view path = rest.substr(1);
            if (path.front() == '/') return PrefixedAbsolute(path, volumes, converted);
            return DatabaseRelative(path, relativeFlag, baseFolder, converted.target);
        }
    }
    return DatabaseRelative(text, relativeFlag, baseFolder, converted.target);
}

}  // namespace

Status ResolvePath(FileLocation& location, std::string_view text, bool relativeFlag,
                   const std::string& baseFolder) noexcept {
    location = FileLocation{};
    if (text.empty() || text.find('\0') != std::string_view::npos) return kBadParameter;
    try {
        const std::vector<platform::fs::Volume> volumes = platform::fs::MountedVolumes();
        ConvertedPath converted;
        if (const Status status = Convert(text, relativeFlag, baseFolder, volumes, converted); status != kNoError) {
            return status;
        }
        FileLocation finished;
        if (const Status status = FinishLocation(converted.target, volumes, finished); status != kNoError) {
            return status;
        }
        if (converted.namesVolumesFolder) finished.volumesFolderPath = "Volumes";
        location = std::move(finished);
        return kNoError;
    } catch (const std::bad_alloc&) {
        return kMemoryFull;
    } catch (const std::length_error&) {
        return kMemoryFull;
    }
}

}  // namespace vd::util
