#include "platform/fs/volumes.h"

#include "platform/fs/mount_watch.h"

#include <algorithm>
#include <array>
#include <mutex>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>

namespace vd::platform::fs {

namespace {

constexpr const char* kDiskLabelFolder = "/dev/disk/by-label";

// File systems that the kernel, the init system or a desktop session mounts for its own use.
// Listing them as volumes would bury the user's disks under dozens of "cgroup" and "shm" entries.
constexpr std::array<std::string_view, 30> kSystemFileSystemTypes{
    "autofs",      "binfmt_misc", "bpf",        "cgroup",     "cgroup2",       "configfs",
    "debugfs",     "devpts",      "devtmpfs",   "efivarfs",   "fusectl",       "hugetlbfs",
    "mqueue",      "nsfs",        "overlay",    "proc",       "pstore",        "ramfs",
    "rpc_pipefs",  "securityfs",  "selinuxfs",  "squashfs",   "sysfs",         "tmpfs",
    "tracefs",     "fuse.gvfsd-fuse", "fuse.portal", "fuse.lxcfs", "fuse.snapfuse", "nfsd"};

constexpr std::array<std::string_view, 3> kSystemFolders{"/proc", "/sys", "/dev"};

bool IsAtOrBelow(std::string_view path, std::string_view folder) {
    if (folder == "/") return !path.empty() && path.front() == '/';
    return path.starts_with(folder) && (path.size() == folder.size() || path[folder.size()] == '/');
}

bool IsSystemMount(const MountEntry& mount) {
    if (std::find(kSystemFileSystemTypes.begin(), kSystemFileSystemTypes.end(), mount.fileSystemType) !=
        kSystemFileSystemTypes.end()) {
        return true;
    }
    return std::any_of(kSystemFolders.begin(), kSystemFolders.end(),
                       [&](std::string_view folder) { return IsAtOrBelow(mount.mountPoint, folder); });
}

std::string LabelOf(const MountEntry& mount, const std::vector<DiskLabel>& labels) {
    const dev_t device = makedev(mount.deviceMajor, mount.deviceMinor);
    for (const DiskLabel& label : labels) {
        if (label.device == device && !label.label.empty()) return label.label;
    }
    return {};
}

std::string LastComponent(std::string_view mountPoint) {
    while (mountPoint.size() > 1 && mountPoint.back() == '/') mountPoint.remove_suffix(1);
    const size_t slash = mountPoint.rfind('/');
    return std::string(slash == std::string_view::npos ? mountPoint : mountPoint.substr(slash + 1));
}

}  // namespace

std::vector<Volume> BuildVolumes(const std::vector<MountEntry>& mounts, const std::vector<DiskLabel>& labels) {
    // Later mounts hide earlier ones on the same mount point.
    std::vector<const MountEntry*> visible;
    for (const MountEntry& mount : mounts) {
        auto same = std::find_if(visible.begin(), visible.end(),
                                 [&](const MountEntry* seen) { return seen->mountPoint == mount.mountPoint; });
        if (same != visible.end()) visible.erase(same);
        visible.push_back(&mount);
    }

    std::vector<Volume> volumes;
    Volume boot;
    boot.name = std::string(kUnlabelledBootVolumeName);
    boot.mountPoint = "/";
    boot.isBoot = true;
    volumes.push_back(boot);

    for (const MountEntry* mount : visible) {
        const std::string label = LabelOf(*mount, labels);
        if (mount->mountPoint == "/") {
            if (!label.empty()) volumes.front().name = label;
            continue;
        }
        if (IsSystemMount(*mount)) continue;
        Volume volume;
        volume.mountPointName = LastComponent(mount->mountPoint);
        volume.name = label.empty() ? volume.mountPointName : label;
        volume.mountPoint = mount->mountPoint;
        volumes.push_back(std::move(volume));
    }
    return volumes;
}

namespace {

std::vector<Volume> ReadVolumes() {
    std::vector<MountEntry> mounts = ReadMountTable();
    // Only the cached type is asked for, and automounts are not triggered: a plain stat of the mount
    // point of an NFS server that has gone away would block every path lookup until it came back.
    std::erase_if(mounts, [](const MountEntry& mount) {
        struct statx info {};
        const int flags = AT_NO_AUTOMOUNT | AT_STATX_DONT_SYNC;
        return statx(AT_FDCWD, mount.mountPoint.c_str(), flags, STATX_TYPE, &info) == 0 && !S_ISDIR(info.stx_mode);
    });
    return BuildVolumes(mounts, ReadDiskLabels(kDiskLabelFolder));
}

MountWatch& Watch() {
    static MountWatch watch(kDiskLabelFolder);
    return watch;
}

// The watch is made when the plug-in loads (see MountWatch), and closed when it is unloaded.
[[maybe_unused]] const bool kWatchOpened = (Watch(), true);

}  // namespace

// Paths are resolved for every file argument: the volumes are read again only when the watch saw a
// change of the mount table or the labels.
std::vector<Volume> MountedVolumes() {
    static std::mutex guard;
    static std::vector<Volume> volumes;
    const std::lock_guard<std::mutex> lock(guard);
    if (Watch().Changed() || volumes.empty()) volumes = ReadVolumes();
    return volumes;
}

const Volume* FindVolume(const std::vector<Volume>& volumes, std::string_view name) {
    if (name.empty()) return nullptr;
    for (const Volume& volume : volumes) {
        if (volume.name == name) return &volume;
    }
    for (const Volume& volume : volumes) {
        if (!volume.mountPointName.empty() && volume.mountPointName == name) return &volume;
    }
    return nullptr;
}

const Volume& VolumeHolding(const std::vector<Volume>& volumes, std::string_view absolutePath) {
    const Volume* best = &volumes.front();
    for (const Volume& volume : volumes) {
        if (volume.mountPoint.size() > best->mountPoint.size() && IsAtOrBelow(absolutePath, volume.mountPoint)) {
            best = &volume;
        }
    }
    return *best;
}

}  // namespace vd::platform::fs
