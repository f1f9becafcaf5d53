#include "platform/fs/drive_mapping.h"

#include <cstdlib>

#include "util/blank_trim.h"

namespace vd::platform::fs {

namespace {

int DriveIndex(char letter) {
    if (letter >= 'A' && letter <= 'Z') return letter - 'A';
    if (letter >= 'a' && letter <= 'z') return letter - 'a';
    return -1;
}


}  // namespace

DriveMapping ParseDriveMapping(std::string_view text) {
    DriveMapping mapping;
    while (!text.empty()) {
        const size_t end = text.find(';');
        const std::string_view entry = util::TrimBlanks(text.substr(0, end));
        text = end == std::string_view::npos ? std::string_view() : text.substr(end + 1);

        const size_t equals = entry.find('=');
        if (equals == std::string_view::npos) continue;
        const std::string_view letter = util::TrimBlanks(entry.substr(0, equals));
        const int index = letter.size() == 1 ? DriveIndex(letter.front()) : -1;
        std::string_view folder = util::TrimBlanks(entry.substr(equals + 1));
        if (index < 0 || folder.empty() || folder.front() != '/') continue;
        // "/mnt/c/" and "/mnt/c" are the same drive root; keep "/" itself.
        while (folder.size() > 1 && folder.back() == '/') folder.remove_suffix(1);
        mapping[static_cast<size_t>(index)] = std::string(folder);
    }
    return mapping;
}

std::optional<std::string> DriveFolder(char letter) {
    const int index = DriveIndex(letter);
    if (index < 0) return std::nullopt;
    const char* variable = std::getenv(kDriveMappingVariable);
    if (!variable) return std::nullopt;
    std::string folder = ParseDriveMapping(variable)[static_cast<size_t>(index)];
    if (folder.empty()) return std::nullopt;
    return folder;
}

}  // namespace vd::platform::fs
