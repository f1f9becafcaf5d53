// Whether a file lies on a volume reached over the network: the media layer reads such files
// slowly and unreliably, so the insert functions can copy them somewhere local first.
#pragma once

#include "platform/fs/mount_table.h"

#include <string>
#include <string_view>
#include <vector>

namespace vd::platform::fs {

// Folders named here (separated by ":") count as remote volumes as well: for machines whose
// network file systems the table does not show as such, and for tests.
inline constexpr const char* kRemoteMountsVariable = "VANDREL_REMOTE_MOUNTS";

// NFS, SMB/CIFS, AFS, Ceph, GlusterFS, 9P, SSHFS and the like.
bool IsNetworkFileSystemType(std::string_view type);

// The mount whose mount point is the deepest folder holding the path (the later of two on the
// same point, which hides the earlier); nullptr when none holds it.
const MountEntry* MountHolding(const std::vector<MountEntry>& mounts, std::string_view absolutePath);

// The file's real path (links followed) lies on a network file system of this process's mount
// table, or in a folder that kRemoteMountsVariable names.
bool IsOnRemoteVolume(const std::string& absolutePath);

}  // namespace vd::platform::fs
