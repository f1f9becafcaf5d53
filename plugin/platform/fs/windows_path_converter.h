// Windows paths, which databases made on Windows carry, placed on this machine's file systems.
// Inside them "\" and "/" both separate, as they do on Windows.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/fs/volumes.h"
#include "util/status_codes.h"

namespace vd::util {

inline constexpr std::string_view kWindowsSeparators = "\\/";

// "C:" + rest: rest below the folder that VANDREL_DRIVES maps the letter to. An unmapped letter, or
// a mapped folder that is not there (an unmounted drive), is -35. As on Windows, ".." at the top of
// the drive stays there, so a drive path never leads outside its folder.
Status ConvertDrivePath(char letter, std::string_view rest, std::string& target);

// "\\server\share\rest" given without its two leading backslashes: rest below the mounted volume
// named share (by label or mount-point name, as for "/Volumes/share"). The server name is not
// checked: what is mounted here is what the share is. No such volume is -35. ".." at the top of the
// share stays there.
Status ConvertNetworkPath(std::string_view serverShareRest, const std::vector<platform::fs::Volume>& volumes,
                          std::string& target);

}  // namespace vd::util
