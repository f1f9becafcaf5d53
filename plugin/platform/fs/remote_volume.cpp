#include "platform/fs/remote_volume.h"

#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace vd::platform::fs {

namespace {

bool IsInside(std::string_view path, std::string_view folder) {
    while (folder.size() > 1 && folder.back() == '/') folder.remove_suffix(1);
    if (folder == "/") return !path.empty() && path.front() == '/';
    return path.substr(0, folder.size()) == folder && (path.size() == folder.size() || path[folder.size()] == '/');
}

bool InNamedRemoteFolder(std::string_view path) {
    const char* named = std::getenv(kRemoteMountsVariable);
    if (!named) return false;
    std::string_view list = named;
    while (!list.empty()) {
        const size_t colon = list.find(':');
        const std::string_view folder = list.substr(0, colon);
        if (!folder.empty() && folder.front() == '/' && IsInside(path, folder)) return true;
        if (colon == std::string_view::npos) break;
        list.remove_prefix(colon + 1);
    }
    return false;
}

}  // namespace

bool IsNetworkFileSystemType(std::string_view type) {
    constexpr std::string_view kNetworkTypes[] = {
        "nfs",  "nfs4",      "cifs",   "smb3",       "smbfs",       "smb",          "ncpfs",   "afs",
        "coda", "ceph",      "glusterfs", "lustre",  "9p",          "davfs",        "fuse.sshfs",
        "fuse.glusterfs", "fuse.ceph", "fuse.rclone", "fuse.s3fs", "fuse.davfs2",
    };
    for (std::string_view network : kNetworkTypes)
        if (type == network) return true;
    return false;
}

const MountEntry* MountHolding(const std::vector<MountEntry>& mounts, std::string_view absolutePath) {
    const MountEntry* deepest = nullptr;
    for (const MountEntry& mount : mounts)
        if (IsInside(absolutePath, mount.mountPoint) &&
            (!deepest || mount.mountPoint.size() >= deepest->mountPoint.size()))
            deepest = &mount;
    return deepest;
}

bool IsOnRemoteVolume(const std::string& absolutePath) {
    std::error_code error;
    std::filesystem::path real = std::filesystem::weakly_canonical(absolutePath, error);
    const std::string path = error ? absolutePath : real.string();
    if (InNamedRemoteFolder(path) || InNamedRemoteFolder(absolutePath)) return true;
    const std::vector<MountEntry> mounts = ReadMountTable();
    const MountEntry* mount = MountHolding(mounts, path);
    return mount && IsNetworkFileSystemType(mount->fileSystemType);
}

}  // namespace vd::platform::fs
