#include "platform/fs/drive_mapping.h"

#include <gtest/gtest.h>

#include "plugin/plugin_test_support.h"

namespace {

using vd::platform::fs::DriveFolder;
using vd::platform::fs::ParseDriveMapping;

TEST(DriveMappingTest, ParsesLettersAndIgnoresWhatItCannotRead) {
    const auto mapping =
        ParseDriveMapping("C=/mnt/c; d = /media/d/ ;E=relative;F=;=/x;GG=/g;H:/h;;Z=/;c=/mnt/c2;1=/one");
    EXPECT_EQ(mapping['C' - 'A'], "/mnt/c2");  // the later entry wins
    EXPECT_EQ(mapping['D' - 'A'], "/media/d");
    EXPECT_EQ(mapping['E' - 'A'], "");
    EXPECT_EQ(mapping['H' - 'A'], "");
    EXPECT_EQ(mapping['Z' - 'A'], "/");
    EXPECT_TRUE(ParseDriveMapping("").at(0).empty());
}

TEST(DriveMappingTest, ReadsTheEnvironmentEachTime) {
    {
        vdtest::ScopedEnv drives("VANDREL_DRIVES", "c=/mnt/c");
            EXPECT_EQ(DriveFolder('c').value_or(""), "/mnt/c");
        EXPECT_FALSE(DriveFolder('D'));
        EXPECT_FALSE(DriveFolder('1'));
    }
    vdtest::ScopedEnv none("VANDREL_DRIVES", std::nullopt);
    EXPECT_FALSE(DriveFolder('C'));
}

}  // namespace
