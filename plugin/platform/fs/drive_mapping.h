// Windows drive letters on Linux. There are no drives here, so a database that stores "C:\..." paths
// works only where the administrator says which folder stands for each drive, in the environment
// variable VANDREL_DRIVES: "C=/mnt/c;D=/media/d". Letters are case-insensitive; entries that are not
// a letter, "=" and an absolute folder are ignored, and a later entry for a letter wins.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace vd::platform::fs {

inline constexpr const char* kDriveMappingVariable = "VANDREL_DRIVES";

using DriveMapping = std::array<std::string, 26>;  // index 0 is drive A; empty means unmapped

DriveMapping ParseDriveMapping(std::string_view text);

// The folder mapped to the drive letter (either case) by VANDREL_DRIVES as it is now; nothing when
// the letter is unmapped or not a letter.
std::optional<std::string> DriveFolder(char letter);

}  // namespace vd::platform::fs
