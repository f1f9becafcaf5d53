#include "platform/fs/volumes.h"

#include <algorithm>
#include <filesystem>

#include <sys/mount.h>
#include <sys/sysmacros.h>
#include <unistd.h>

#include <gtest/gtest.h>

namespace {

using namespace vd::platform::fs;

MountEntry Mount(const char* point, const char* type, uint32_t major = 8, uint32_t minor = 1) {
    return MountEntry{major, minor, point, type, "/dev/x"};
}

bool HasMountPoint(const std::vector<Volume>& volumes, const std::string& point) {
    return std::any_of(volumes.begin(), volumes.end(), [&](const Volume& v) { return v.mountPoint == point; });
}

std::vector<std::string> Names(const std::vector<Volume>& volumes) {
    std::vector<std::string> names;
    for (const Volume& volume : volumes) names.push_back(volume.name);
    return names;
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
    ASSERT_EQ(Names(volumes), (std::vector<std::string>{"root", "efi", "Holiday Photos", "data", "home"}));
    EXPECT_EQ(volumes[2].mountPointName, "USB");
    for (size_t i = 0; i < volumes.size(); ++i) EXPECT_EQ(volumes[i].isBoot, i == 0) << i;
    // A labelled root, and a missing one.
    EXPECT_EQ(Names(BuildVolumes({Mount("/", "ext4", 254, 0)}, {{makedev(254, 0), "System"}})),
              std::vector<std::string>{"System"});
    const auto noRoot = BuildVolumes({}, {});
    EXPECT_EQ(Names(noRoot), std::vector<std::string>{"root"});
    EXPECT_EQ(noRoot.front().mountPoint, "/");
}

TEST(VolumesTest, TheLaterOfTwoMountsOnOnePointIsTheVisibleOne) {
    EXPECT_EQ(Names(BuildVolumes({Mount("/mnt/a", "ext4", 8, 1), Mount("/mnt/a", "xfs", 8, 2)},
                                 {{makedev(8, 1), "Old"}, {makedev(8, 2), "New"}})),
              (std::vector<std::string>{"root", "New"}));
    // Covered by a system file system, the disk is not reachable at all.
    EXPECT_EQ(BuildVolumes({Mount("/mnt/a", "ext4"), Mount("/mnt/a", "tmpfs", 0, 9)}, {}).size(), 1u);
}

TEST(VolumesTest, LookupPrefersNamesOverMountPointNames) {
    const auto volumes = BuildVolumes(
        {Mount("/", "ext4", 254, 0), Mount("/media/USB", "vfat", 8, 17), Mount("/mnt/Photos", "ext4", 8, 33)},
        {{makedev(8, 17), "Photos"}});
    const auto mountedAt = [&](const char* name) {
        const Volume* volume = FindVolume(volumes, name);
        return volume ? volume->mountPoint : "<none>";
    };
    EXPECT_EQ(mountedAt("Photos"), "/media/USB");
    EXPECT_EQ(mountedAt("USB"), "/media/USB");
    EXPECT_EQ(mountedAt("photos"), "<none>");
    EXPECT_EQ(mountedAt("media"), "<none>");
}

TEST(VolumesTest, TheDeepestMountPointHoldsAPath) {
    const auto volumes = BuildVolumes(
        {Mount("/", "ext4", 254, 0), Mount("/mnt/a", "ext4", 8, 1), Mount("/mnt/a/b", "ext4", 8, 2)}, {});
    EXPECT_EQ(VolumeHolding(volumes, "/mnt/a/b/c").mountPoint, "/mnt/a/b");
    EXPECT_EQ(VolumeHolding(volumes, "/mnt/a/bc").mountPoint, "/mnt/a");
    EXPECT_EQ(VolumeHolding(volumes, "/mnt/ab").mountPoint, "/");
}

// The volumes are kept between calls; a mount made or removed in between shows in the next call.
TEST(VolumesTest, AMountMadeOrRemovedShowsInTheNextCall) {
    std::string point = (std::filesystem::temp_directory_path() / "vd-volume-XXXXXX").string();
    ASSERT_NE(mkdtemp(point.data()), nullptr);
    struct Cleanup {
        std::string point;
        bool mounted = false;
        ~Cleanup() {
            if (mounted) umount2(point.c_str(), MNT_DETACH);
            rmdir(point.c_str());
        }
    } cleanup{point};
    EXPECT_FALSE(HasMountPoint(MountedVolumes(), point));
    if (mount("/", point.c_str(), nullptr, MS_BIND, nullptr) != 0) GTEST_SKIP() << "cannot mount here (not root?)";
    cleanup.mounted = true;
    if (!HasMountPoint(BuildVolumes(ReadMountTable(), {}), point))
        GTEST_SKIP() << "the boot file system's type is not one that makes volumes";
    EXPECT_TRUE(HasMountPoint(MountedVolumes(), point));
    ASSERT_EQ(umount2(point.c_str(), MNT_DETACH), 0);
    cleanup.mounted = false;
    EXPECT_FALSE(HasMountPoint(MountedVolumes(), point));
}

}  // namespace
