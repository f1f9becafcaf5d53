#include "platform/fs/windows_path_converter.h"

#include "platform/fs/drive_mapping.h"
#include "platform/fs/item_probe.h"
#include "util/folder_walk.h"
#include "platform/fs/posix_path_converter.h"

namespace vd::util {

Status ConvertDrivePath(char letter, std::string_view rest, std::string& target) {
    const std::optional<std::string> folder = platform::fs::DriveFolder(letter);
    if (!folder) return kNoSuchVolume;
    std::string root = NormalizeAbsolutePath(*folder);
    if (platform::fs::ProbeItem(root).kind != platform::fs::ItemKind::Folder) return kNoSuchVolume;

    FolderWalk walk(std::move(root), FolderWalk::AtFloor::Stay);
    if (const Status status = walk.Walk(rest, kWindowsSeparators); status != kNoError) return status;
    target = walk.Path();
    return kNoError;
}

Status ConvertNetworkPath(std::string_view serverShareRest, const std::vector<platform::fs::Volume>& volumes,
                          std::string& target) {
    const size_t afterServer = serverShareRest.find_first_of(kWindowsSeparators);
    if (afterServer == std::string_view::npos) return kNoSuchVolume;
    const std::string_view shareRest = serverShareRest.substr(afterServer + 1);
    const size_t afterShare = shareRest.find_first_of(kWindowsSeparators);
    const std::string_view share = shareRest.substr(0, afterShare);

    const platform::fs::Volume* volume = platform::fs::FindVolume(volumes, share);
    if (!volume) return kNoSuchVolume;
    const std::string_view rest =
        afterShare == std::string_view::npos ? std::string_view() : shareRest.substr(afterShare + 1);
    return PathOnVolume(*volume, rest, kWindowsSeparators, target);
}

}  // namespace vd::util
