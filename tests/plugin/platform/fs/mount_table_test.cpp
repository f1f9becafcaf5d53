#include "platform/fs/mount_table.h"

#include <gtest/gtest.h>

namespace {

using vd::platform::fs::ParseMountInfo;

TEST(MountTableTest, ReadsTheFieldsAndDecodesEscapes) {
    const char* text =
        "27 1 254:0 / / rw,relatime - ext4 /dev/vda rw\n"
        "40 27 8:17 / /media/user/My\\040Disk rw shared:12 master:3 - vfat /dev/sdb1 rw\n"
        "41 27 0:45 / /mnt/back\\134slash rw - nfs4 server:/export rw\n"
        "garbage line\n"
        "42 27 x:1 / /mnt/bad rw - ext4 /dev/sdc rw\n"
        "43 27 8:1 / relative rw - ext4 /dev/sdd rw\n"
        "44 27 8:2 / /mnt/no-type rw\n"
        "\n"
        "45 27 8:3 / /mnt/last rw - xfs /dev/sde rw";
    const auto entries = ParseMountInfo(text);
    ASSERT_EQ(entries.size(), 4u);
    EXPECT_EQ(entries[0].mountPoint, "/");
    EXPECT_EQ(entries[0].deviceMajor, 254u);
    EXPECT_EQ(entries[1].mountPoint, "/media/user/My Disk");
    EXPECT_EQ(entries[1].deviceMinor, 17u);
    EXPECT_EQ(entries[1].fileSystemType, "vfat");
    EXPECT_EQ(entries[1].source, "/dev/sdb1");
    EXPECT_EQ(entries[2].mountPoint, "/mnt/back\\slash");
    EXPECT_EQ(entries[3].mountPoint, "/mnt/last");
}

TEST(MountTableTest, ThisProcessHasARootMount) {
    const auto entries = vd::platform::fs::ReadMountTable();
    bool root = false;
    for (const auto& entry : entries) root = root || entry.mountPoint == "/";
    EXPECT_TRUE(root);
}

}  // namespace
