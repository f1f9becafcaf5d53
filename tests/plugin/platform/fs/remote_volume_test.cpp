// Which mount holds a file, and which mounts count as remote.
#include "platform/fs/remote_volume.h"

#include <gtest/gtest.h>

namespace vdtest {
namespace {

using vd::platform::fs::MountEntry;

TEST(RemoteVolume, TheDeepestMountDecidesAndOnlyNetworkFileSystemsAreRemote) {
    const std::vector<MountEntry> mounts{
        {8, 1, "/", "ext4", "/dev/sda1"},
        {0, 50, "/mnt/share", "nfs4", "server:/export"},
        {8, 2, "/mnt/share/local", "ext4", "/dev/sdb1"},
        {0, 51, "/mnt/sharepoint", "tmpfs", "tmpfs"},
    };
    using vd::platform::fs::MountHolding;
    EXPECT_EQ(MountHolding(mounts, "/mnt/share/song.aif")->fileSystemType, "nfs4");
    EXPECT_EQ(MountHolding(mounts, "/mnt/share/local/song.aif")->fileSystemType, "ext4");
    EXPECT_EQ(MountHolding(mounts, "/mnt/sharepoint/song.aif")->fileSystemType, "tmpfs") << "a prefix is not a folder";
    EXPECT_EQ(MountHolding(mounts, "/home/song.aif")->mountPoint, "/");
    EXPECT_EQ(MountHolding({}, "/home/song.aif"), nullptr);

    for (const char* type : {"nfs", "nfs4", "cifs", "smb3", "fuse.sshfs", "9p"})
        EXPECT_TRUE(vd::platform::fs::IsNetworkFileSystemType(type)) << type;
    for (const char* type : {"ext4", "tmpfs", "overlay", "fuse", "nfsd"})
        EXPECT_FALSE(vd::platform::fs::IsNetworkFileSystemType(type)) << type;
}

}  // namespace
}  // namespace vdtest
