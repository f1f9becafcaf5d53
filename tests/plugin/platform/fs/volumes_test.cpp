#include "platform/fs/volumes.h"

#include <sys/sysmacros.h>

#include <gtest/gtest.h>

namespace {

using namespace vd::platform::fs;

MountEntry Mount(const char* point, const char* type, uint32_t major = 8, uint32_t minor = 1) {
    return MountEntry{major, minor, point, type, "/dev/x"};
}

TEST(VolumesTest, NamesComeFromLabelsElseFromMountPoints) {
    const std::vector<MountEntry> mounts{
        Mount("/", "ext4", 254, 0),          Mount("/proc", "proc", 0, 21),
        Mount("/dev/shm", "tmpfs", 0, 23),   Mount("/sys/fs/cgroup/cpu", "cgroup", 0, 29),
        Mount("/boot/efi", "vfat", 8, 1),    Mount("/media/u/USB", "vfat", 8, 17),
        Mount("/mnt/data", "ext4", 8, 33),   Mount("/run/user/1000/doc", "fuse.portal", 0, 50),
        Mount("/var/lib/x/merged", "overlay", 0, 60), Mount("/home", "btrfs", 0, 70),
    };
    const std::vector<DiskLabel> labels{{makedev(8, 17), "Holiday Photos"}, {makedev(8, 99), "Elsewhere"}};
    const auto volumes = BuildVolumes(mounts, labels);
    ASSERT_EQ(volumes.size(), 5u);
    EXPECT_EQ(volumes[0].name, "root");
    EXPECT_TRUE(volumes[0].isBoot);
    EXPECT_EQ(volumes[1].name, "efi");
    EXPECT_EQ(volumes[2].name, "Holiday Photos");
    EXPECT_EQ(volumes[2].mountPointName, "USB");
    EXPECT_EQ(volumes[3].name, "data");
    EXPECT_EQ(volumes[4].name, "home");
    for (size_t i = 1; i < volumes.size(); ++i) EXPECT_FALSE(volumes[i].isBoot);
}

TEST(VolumesTest, LabelledRootAndMissingRoot) {
    auto volumes = BuildVolumes({Mount("/", "ext4", 254, 0)}, {{makedev(254, 0), "System"}});
    EXPECT_EQ(volumes.front().name, "System");
    volumes = BuildVolumes({}, {});
    ASSERT_EQ(volumes.size(), 1u);
    EXPECT_EQ(volumes.front().name, "root");
    EXPECT_EQ(volumes.front().mountPoint, "/");
}

TEST(VolumesTest, TheLaterOfTwoMountsOnOnePointIsTheVisibleOne) {
    auto volumes = BuildVolumes({Mount("/mnt/a", "ext4", 8, 1), Mount("/mnt/a", "xfs", 8, 2)},
                                {{makedev(8, 1), "Old"}, {makedev(8, 2), "New"}});
    ASSERT_EQ(volumes.size(), 2u);
    EXPECT_EQ(volumes[1].name, "New");
    // Covered by a system file system, the disk is not reachable at all.
    volumes = BuildVolumes({Mount("/mnt/a", "ext4"), Mount("/mnt/a", "tmpfs", 0, 9)}, {});
    EXPECT_EQ(volumes.size(), 1u);
}

TEST(VolumesTest, LookupPrefersNamesOverMountPointNames) {
    const auto volumes = BuildVolumes(
        {Mount("/", "ext4", 254, 0), Mount("/media/USB", "vfat", 8, 17), Mount("/mnt/Photos", "ext4", 8, 33)},
        {{makedev(8, 17), "Photos"}});
    ASSERT_NE(FindVolume(volumes, "Photos"), nullptr);
    EXPECT_EQ(FindVolume(volumes, "Photos")->mountPoint, "/media/USB");
    ASSERT_NE(FindVolume(volumes, "USB"), nullptr);
    EXPECT_EQ(FindVolume(volumes, "USB")->mountPoint, "/media/USB");
    EXPECT_EQ(FindVolume(volumes, "photos"), nullptr);
    EXPECT_EQ(FindVolume(volumes, "media"), nullptr);
}

TEST(VolumesTest, TheDeepestMountPointHoldsAPath) {
    const auto volumes = BuildVolumes(
        {Mount("/", "ext4", 254, 0), Mount("/mnt/a", "ext4", 8, 1), Mount("/mnt/a/b", "ext4", 8, 2)}, {});
    EXPECT_EQ(VolumeHolding(volumes, "/mnt/a/b/c").mountPoint, "/mnt/a/b");
    EXPECT_EQ(VolumeHolding(volumes, "/mnt/a/bc").mountPoint, "/mnt/a");
    EXPECT_EQ(VolumeHolding(volumes, "/mnt/ab").mountPoint, "/");
}

TEST(VolumesTest, ThisMachineHasABootVolumeFirst) {
    const auto volumes = MountedVolumes();
    ASSERT_FALSE(volumes.empty());
    EXPECT_TRUE(volumes.front().isBoot);
    EXPECT_EQ(volumes.front().mountPoint, "/");
    for (const Volume& volume : volumes) EXPECT_FALSE(volume.name.empty()) << volume.mountPoint;
}

}  // namespace
