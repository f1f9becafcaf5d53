#include "container/reference_result.h"

#include "container/database_location.h"
#include "platform/fs/volumes.h"
#include "util/reference_prefix.h"
#include "util/status_codes.h"

#include <cstdio>
#include <filesystem>

namespace vd::container {

namespace {

constexpr int32_t kNoSuchVolume = -35;

// The file's path from the database's folder, or -35 when the two lie on different volumes (a
// relative path would not survive either volume being mounted elsewhere).
int32_t RelativeToFolder(const std::string& file, const std::string& folder, std::string& relative) {
    const auto volumes = platform::fs::MountedVolumes();
    if (&platform::fs::VolumeHolding(volumes, file) != &platform::fs::VolumeHolding(volumes, folder))
        return kNoSuchVolume;
    relative = std::filesystem::path(file).lexically_relative(folder).generic_string();
    return relative.empty() ? kNoSuchVolume : 0;
}

}  // namespace

int32_t ReferenceText(const std::string& absolutePath, std::string_view word, uint16_t width, uint16_t height,
                      std::string& text) {
    std::string folder;
    const int location = DatabaseLocation(folder);
    if (location != kLocalDatabase && location != kRemoteDatabase) return location;

    std::string prefix;
    util::AppendPlatformPrefix(prefix, word);
    std::string second;
    std::string relative;
    if (location == kLocalDatabase) {
        if (const int32_t status = RelativeToFolder(absolutePath, folder, relative);
            status != 0 && status != kNoSuchVolume)
            return status;
    }
    second = prefix + (relative.empty() ? absolutePath : relative);

    char size[32];
    std::snprintf(size, sizeof size, "size:%hu,%hu\r", width, height);
    text = size + second + "\r" + prefix + absolutePath;
    return 0;
}

}  // namespace vd::container
