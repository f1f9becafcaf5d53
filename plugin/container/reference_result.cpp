#include "container/reference_result.h"

#include "container/database_location.h"
#include "frame/args/results.h"
#include "platform/fs/volumes.h"
#include "util/reference_prefix.h"

#include <cstdio>
#include <filesystem>

namespace vd::container {

namespace {
constexpr int kNoSuchVolume = -35;
}

int RelativePath(std::string_view folder, std::string_view target, std::string& relative) {
    auto volumes = platform::fs::MountedVolumes();
    const auto& folderVolume = platform::fs::VolumeHolding(volumes, folder);
    const auto& targetVolume = platform::fs::VolumeHolding(volumes, target);
    if (folderVolume.mountPoint != targetVolume.mountPoint) return kNoSuchVolume;
    relative = std::filesystem::path(target).lexically_relative(std::filesystem::path(folder)).generic_string();
    if (relative.empty()) relative = std::filesystem::path(target).filename().string();
    return 0;
}

int ReferenceText(std::string_view absolutePath, std::string_view prefixWord, uint16_t width, uint16_t height,
                  std::string& text) {
    std::string folder;
    int where = DatabaseLocation(folder);
    if (where != kLocalDatabase && where != kRemoteDatabase) return where;

    std::string second;
    std::string relative;
    int r = where == kLocalDatabase ? RelativePath(folder, absolutePath, relative) : kNoSuchVolume;
    if (r == 0) {
        util::AppendPlatformPrefix(second, prefixWord);
        second += relative;
    } else if (r == kNoSuchVolume) {
        // Another volume than the database's, or a hosted database: the absolute form.
        second = std::string(prefixWord) + ":" + std::string(absolutePath);
    } else {
        return r;
    }

    char size[32];
    std::snprintf(size, sizeof size, "size:%hu,%hu\r", width, height);
    std::string third;
    util::AppendPlatformPrefix(third, prefixWord);
    third += absolutePath;
    text = size + second + "\r" + third;
    return 0;
}

int ReferenceResult(FMX_Data* result, std::string_view absolutePath, std::string_view prefixWord, uint16_t width,
                    uint16_t height) {
    std::string text;
    if (int e = ReferenceText(absolutePath, prefixWord, width, height, text)) return e;
    return SetResultUtf8(result, text);
}

}  // namespace vd::container
