#include "platform/fs/relative_path_converter.h"

#include "platform/fs/item_probe.h"
#include "util/folder_walk.h"

namespace vd::util {

Status ConvertRelativePath(std::string_view text, std::string_view separators, const std::string& baseFolder,
                           std::string& target) {
    if (baseFolder.empty() || baseFolder.front() != '/') return kFolderNotFound;
    const std::string base = NormalizeAbsolutePath(baseFolder);
    const platform::fs::ItemProbe probe = platform::fs::ProbeItem(base);
    if (probe.status != kNoError) return probe.status;
    if (probe.kind != platform::fs::ItemKind::Folder) return kFolderNotFound;

    if (!text.empty() && separators.find(text.front()) != std::string_view::npos) return kFileNotFound;

    FolderWalk walk("/", FolderWalk::AtFloor::Fail);
    walk.Walk(base, "/");  // cannot fail: the base is normalised, it has no ".."
    if (const Status status = walk.Walk(text, separators); status != kNoError) return status;
    target = walk.Path();
    return kNoError;
}

}  // namespace vd::util
