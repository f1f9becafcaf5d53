// Absolute POSIX paths, including the "/Volumes/Name/..." form that names a volume.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/fs/volumes.h"
#include "util/status_codes.h"

namespace vd::util {

struct ConvertedPath {
    std::string target;               // absolute and normalised
    bool namesVolumesFolder = false;  // the text was "/Volumes/" itself
};

// "/Volumes/Name/rest" is rest below the mount point of the volume called Name (-35 when there is
// none); ".." at the volume's top stays there, as "/.." stays at "/". "/Volumes/" alone is the boot
// volume. Any other path is taken as it stands. A path not beginning with "/" is -35.
Status ConvertPosixPath(std::string_view path, const std::vector<platform::fs::Volume>& volumes,
                        ConvertedPath& converted);

// rest below the volume's mount point, which ".." does not leave.
Status PathOnVolume(const platform::fs::Volume& volume, std::string_view rest, std::string_view separators,
                    std::string& target);

}  // namespace vd::util
