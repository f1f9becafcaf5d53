// File-system labels, as udev publishes them in /dev/disk/by-label: one symbolic link per labelled
// device, named by the label.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include <sys/types.h>

namespace vd::platform::fs {

struct DiskLabel {
    dev_t device = 0;  // st_rdev of the device node the link points to
    std::string label;
};

// udev writes characters that are unsafe in file names as "\xHH"; this gives the label back.
std::string DecodeLabelEscapes(std::string_view linkName);

// Empty when the folder does not exist (containers, systems without udev).
std::vector<DiskLabel> ReadDiskLabels(const std::string& folder = "/dev/disk/by-label");

}  // namespace vd::platform::fs
