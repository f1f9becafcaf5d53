// Volumes as users name them in "/Volumes/Name/..." and "\\server\share\..." paths: the mounted
// file systems that hold user data, each named by its label, or by the last component of its mount
// point when it has none. The root file system is the boot volume; without a label it is "root".
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/fs/disk_labels.h"
#include "platform/fs/mount_table.h"

namespace vd::platform::fs {

inline constexpr std::string_view kUnlabelledBootVolumeName = "root";

struct Volume {
    std::string name;            // what lookups match first and what records report
    std::string mountPoint;      // absolute; "/" for the boot volume
    std::string mountPointName;  // last component of the mount point; empty for the boot volume
    bool isBoot = false;
};

// The boot volume comes first, always, even when the table has no root entry; the others follow in
// mount order. Kernel, device and session file systems (proc, tmpfs, cgroup, overlay layers ...)
// are not volumes, and of two mounts on one mount point only the later, visible one counts.
std::vector<Volume> BuildVolumes(const std::vector<MountEntry>& mounts, const std::vector<DiskLabel>& labels);

// The volumes of this machine as this process sees them. Mounts of single files (bind mounts that
// containers use for /etc/hosts) are left out.
std::vector<Volume> MountedVolumes();

// A volume's name wins over another volume's mount-point name, so a labelled disk is found by its
// label even when some other mount point happens to carry the same name. Names compare exactly.
const Volume* FindVolume(const std::vector<Volume>& volumes, std::string_view name);

// The volume whose mount point is the longest leading part of the absolute path; the boot volume
// when no other holds it. The list must come from BuildVolumes (it is never empty).
const Volume& VolumeHolding(const std::vector<Volume>& volumes, std::string_view absolutePath);

}  // namespace vd::platform::fs
