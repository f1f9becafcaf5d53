#include "platform/fs/drive_mapping.h"

#include <gtest/gtest.h>

#include "plugin/plugin_test_support.h"

namespace {

using vd::platform::fs::DriveFolder;
using vd::platform::fs::ParseDriveMapping;

TEST(DriveMappingTest, ParsesLettersIgnoresWhatItCannotReadAndReadsTheEnvironmentEachTime) {
    const auto mapping =
        ParseDriveMapping("C=/mnt/c; d = /media/d/ ;E=relative;F=;=/x;GG=/g;H:/h;;Z=/;c=/mnt/c2;1=/one");
    // The later C wins; E (relative), F (empty), GG, H: and 1 are not read.
    std::string mapped;
    for (size_t i = 0; i < mapping.size(); ++i)
        if (!mapping[i].empty()) mapped += char('A' + i) + ("=" + mapping[i]) + ";";
    EXPECT_EQ(mapped, "C=/mnt/c2;D=/media/d;Z=/;");
    EXPECT_TRUE(ParseDriveMapping("").at(0).empty());
    // The environment is read each time.
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
