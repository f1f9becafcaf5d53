#include "platform/fs/posix_path_converter.h"

#include "util/folder_walk.h"

namespace vd::util {

namespace {

constexpr std::string_view kVolumesFolder = "/Volumes/";

}  // namespace

Status PathOnVolume(const platform::fs::Volume& volume, std::string_view rest, std::string_view separators,
                    std::string& target) {
    FolderWalk walk(volume.mountPoint, FolderWalk::AtFloor::Stay);
    if (const Status status = walk.Walk(rest, separators); status != kNoError) return status;
    target = walk.Path();
    return kNoError;
}

Status ConvertPosixPath(std::string_view path, const std::vector<platform::fs::Volume>& volumes,
                        ConvertedPath& converted) {
    converted = ConvertedPath{};
    if (path.empty() || path.front() != '/') return kNoSuchVolume;

    if (!path.starts_with(kVolumesFolder)) {
        converted.target = NormalizeAbsolutePath(path);
        return kNoError;
    }

    std::string_view rest = path.substr(kVolumesFolder.size());
    // Empty pieces are skipped everywhere, so "/Volumes//Disk" is "/Volumes/Disk".
    while (!rest.empty() && rest.front() == '/') rest.remove_prefix(1);
    const size_t slash = rest.find('/');
    const std::string_view name = rest.substr(0, slash);
    if (name.empty()) {
        converted.target = volumes.front().mountPoint;
        converted.namesVolumesFolder = true;
        return kNoError;
    }
    const platform::fs::Volume* volume = platform::fs::FindVolume(volumes, name);
    if (!volume) return kNoSuchVolume;
    const std::string_view below = slash == std::string_view::npos ? std::string_view() : rest.substr(slash + 1);
    return PathOnVolume(*volume, below, "/", converted.target);
}

}  // namespace vd::util
