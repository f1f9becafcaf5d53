// The kernel's table of mounted file systems, as /proc/self/mountinfo lists it for this process.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vd::platform::fs {

struct MountEntry {
    uint32_t deviceMajor = 0;  // st_dev of files on this file system
    uint32_t deviceMinor = 0;
    std::string mountPoint;    // absolute, escapes decoded
    std::string fileSystemType;
    std::string source;        // the device or server the file system comes from
};

// Lines that do not have the mountinfo layout are skipped rather than failing the whole table: a
// kernel that adds a field must not make every volume disappear.
std::vector<MountEntry> ParseMountInfo(std::string_view text);

// /proc/self/mountinfo, read with a size cap; empty when it cannot be read (no /proc).
std::vector<MountEntry> ReadMountTable();

}  // namespace vd::platform::fs
