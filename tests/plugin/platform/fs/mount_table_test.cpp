#include "platform/fs/mount_table.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using vd::platform::fs::ParseMountInfo;

TEST(MountTableTest, ReadsTheFieldsDecodesEscapesAndFindsThisProcesssRoot) {
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
    std::vector<std::string> shown;
    for (const auto& e : ParseMountInfo(text))
        shown.push_back(std::to_string(e.deviceMajor) + ":" + std::to_string(e.deviceMinor) + " " + e.mountPoint + " " +
                        e.fileSystemType + " " + e.source);
    EXPECT_EQ(shown, (std::vector<std::string>{"254:0 / ext4 /dev/vda", "8:17 /media/user/My Disk vfat /dev/sdb1",
                                               "0:45 /mnt/back\\slash nfs4 server:/export",
                                               "8:3 /mnt/last xfs /dev/sde"}));
    // This process has a root mount.
    const auto entries = vd::platform::fs::ReadMountTable();
    EXPECT_TRUE(std::any_of(entries.begin(), entries.end(), [](const auto& e) { return e.mountPoint == "/"; }));
}

}  // namespace
