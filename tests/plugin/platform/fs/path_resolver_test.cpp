#include "platform/fs/path_resolver.h"


#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>

#include "plugin/plugin_test_support.h"
#include "platform/fs/volumes.h"
#include "support/temp_folder.h"

namespace {

namespace fs = std::filesystem;
using namespace vd::util;

struct Expectation {
    std::string text;
    Status status;
    std::string fullPath;  // checked only when status is 0
};

// A database folder "db" with "a/b.wav" and "file.txt" in it, a home folder with "Music", and no
// drive mapping unless a test sets one.
class PathResolverTest : public ::testing::Test {
protected:
    PathResolverTest()
        : home_("HOME", (temp_.path() / "home").string()), drives_("VANDREL_DRIVES", std::nullopt) {
        fs::create_directories(temp_.path() / "db" / "a");
        fs::create_directories(temp_.path() / "home" / "Music");
        vdtest::writeFile(temp_.path() / "db" / "a" / "b.wav", "RIFF");
        vdtest::writeFile(temp_.path() / "db" / "file.txt", "text");
    }

    std::string Temp() const { return temp_.path().string(); }
    std::string Db() const { return Temp() + "/db"; }
    std::string BWav() const { return Db() + "/a/b.wav"; }

    Status Resolve(const std::string& text, FileLocation& location, bool relative = true) const {
        return ResolvePath(location, text, relative, Db());
    }

    void ExpectAll(const std::vector<Expectation>& cases, bool relative = true) const {
        for (const Expectation& c : cases) {
            FileLocation location;
            const Status status = Resolve(c.text, location, relative);
            EXPECT_EQ(status, c.status) << c.text;
            if (status == 0 && c.status == 0) { EXPECT_EQ(FullPath(location), c.fullPath) << c.text; }
        }
    }

    static std::string BootName() { return vd::platform::fs::MountedVolumes().front().name; }

    vdtest::TempFolder temp_;
    vdtest::ScopedEnv home_;
    vdtest::ScopedEnv drives_;
};

TEST_F(PathResolverTest, PosixPathsAreTakenAsTheyStand) {
    ExpectAll({
        {"", -50, ""},
        {std::string("a\0b", 3), -50, ""},
        {BWav(), 0, BWav()},
        {Db() + "/a/", 0, Db() + "/a"},
        {Db() + "/./a//b.wav", 0, BWav()},
        {Db() + "/a/../file.txt", 0, Db() + "/file.txt"},
        {"/../" + Db().substr(1) + "/file.txt", 0, Db() + "/file.txt"},
        {Db() + "/missing/new.wav", -43, ""},
        {Db() + "/file.txt/new.wav", -1407, ""},
        {"/" + std::string(300, 'x') + "/a", -37, ""},
    });
}

TEST_F(PathResolverTest, ExistingTargetHasNoLeafAndMissingTargetKeepsItsName) {
    FileLocation location;
    ASSERT_EQ(Resolve(BWav(), location), 0);
    EXPECT_EQ(location.existingPath, BWav());
    EXPECT_EQ(location.leafName, "");

    ASSERT_EQ(Resolve(Db() + "/a/new take.wav", location), 0);
    EXPECT_EQ(location.existingPath, Db() + "/a");
    EXPECT_EQ(location.leafName, "new take.wav");
    EXPECT_EQ(location.volumesFolderPath, "");
}

TEST_F(PathResolverTest, RelativePathsStartAtTheBaseFolder) {
    ExpectAll({
        {"a/b.wav", 0, BWav()},
        {"a\\b.wav", 0, BWav()},
        {"a\\x/../b.wav", 0, BWav()},  // a Windows text separates with "/" too
        {"../db/a/b.wav", 0, BWav()},
        {"\\a\\b.wav", -43, ""},  // a relative path may not begin with its separator
        {"c:/x", -43, ""},        // not a drive: a folder "c:" in the database's folder
        {"C:", 0, Db() + "/C:"},
        {"~x", 0, Db() + "/~x"},
    });
}

TEST_F(PathResolverTest, RelativePathsNeedTheFlagAndAnExistingBaseFolder) {
    FileLocation location;
    EXPECT_EQ(Resolve("a/b.wav", location, false), -120);
    EXPECT_EQ(Resolve("file:./a/b.wav", location, false), -120);
    EXPECT_EQ(ResolvePath(location, "a/b.wav", true, ""), -120);
    EXPECT_EQ(ResolvePath(location, "a/b.wav", true, Temp() + "/gone"), -120);
    // A base written with a trailing separator or dot pieces is the same folder.
    ASSERT_EQ(ResolvePath(location, "a/b.wav", true, Temp() + "/./db/"), 0);
    EXPECT_EQ(FullPath(location), BWav());
}

TEST_F(PathResolverTest, DotDotMayClimbToTheRootButNotAboveIt) {
    const fs::path temp = temp_.path();
    const std::string topFolder = "/" + (++temp.begin())->string();  // one level deep, e.g. "/tmp"
    FileLocation location;
    ASSERT_EQ(ResolvePath(location, "../a.wav", true, topFolder), 0);
    EXPECT_EQ(FullPath(location), "/a.wav");
    EXPECT_EQ(ResolvePath(location, "../../a.wav", true, topFolder), -120);
    EXPECT_EQ(ResolvePath(location, "x/../../../a.wav", true, topFolder), -120);
}

TEST_F(PathResolverTest, PrefixedReferences) {
    ExpectAll({
        {"file:./a/b.wav", 0, BWav()},
        {"image:a/b.wav", 0, BWav()},
        {"moviewin:a\\b.wav", 0, BWav()},
        {"file:ab", 0, Db() + "/ab"},
        {"file:" + Db() + "/missing/x", -43, ""},
        // Too short after the word, or no colon after it: the whole text is a relative name.
        {"movie:x", 0, Db() + "/movie:x"},
        {"file:a", 0, Db() + "/file:a"},
        {"filemacX/a", -43, ""},
    });
}

TEST_F(PathResolverTest, TildePathsLieInTheHomeFolder) {
    const std::string home = Temp() + "/home";
    ExpectAll(
        {
            {"~/Music/a.aif", 0, home + "/Music/a.aif"},
            {"~/", 0, home},
            {"~/../db/a/b.wav", 0, BWav()},
            {"~/Films/a.mov", -43, ""},
        },
        /*relative=*/false);

    FileLocation location;
    {
        vdtest::ScopedEnv noHome("HOME", std::nullopt);
        EXPECT_EQ(Resolve("~/Music/a.aif", location), -108);
        EXPECT_EQ(Resolve(BWav(), location), 0) << "only ~ paths need a home folder";
    }
    vdtest::ScopedEnv missingHome("HOME", Temp() + "/nobody");
    EXPECT_EQ(Resolve("~/Music/a.aif", location), -120);
}

TEST_F(PathResolverTest, DrivePathsNeedAMapping) {
    const std::string cDrive = Temp() + "/c-drive";
    fs::create_directories(cDrive + "/Data");
    FileLocation location;
    EXPECT_EQ(Resolve("C:\\Data\\a.wav", location), -35);

    vdtest::ScopedEnv drives("VANDREL_DRIVES", "C=" + cDrive + "/;d=" + Temp() + "/d-drive");
    ExpectAll({
        {"C:\\..\\..\\Data\\a.wav", 0, cDrive + "/Data/a.wav"},  // never leaves the drive
        {"imagewin:/C:/Data/a.wav", 0, cDrive + "/Data/a.wav"},
        {"D:\\a.wav", -35, ""},  // mapped, but the folder is not there: an unmounted drive
    });
}

TEST_F(PathResolverTest, NetworkPathsNameAMountedVolume) {
    const std::string boot = BootName();
    std::string windowsPath = Db().substr(1);  // the database folder below "/"
    std::replace(windowsPath.begin(), windowsPath.end(), '/', '\\');
    ExpectAll({
        {"\\\\server\\" + boot + "\\" + windowsPath + "\\a\\b.wav", 0, BWav()},
        {"\\\\any\\" + boot, 0, "/"},
        {"\\\\server\\no-such-share-7c1e\\a.wav", -35, ""},
    });
}

TEST_F(PathResolverTest, RootAndVolumesFolderReachMountedFileSystems) {
    const std::string boot = BootName();
    if (!fs::exists("/dev/disk/by-label")) { EXPECT_EQ(boot, "root"); }

    FileLocation location;
    for (const char* root : {"/", "/Volumes/"}) {
        ASSERT_EQ(Resolve(root, location), 0) << root;
        EXPECT_TRUE(location.onBootVolume) << root;
        EXPECT_EQ(location.volumeName, boot) << root;
        EXPECT_EQ(location.existingPath, "/") << root;
    }
    EXPECT_EQ(location.volumesFolderPath, "Volumes");

    ASSERT_EQ(Resolve("/Volumes/" + boot, location), 0);
    EXPECT_EQ(location.existingPath, "/");
    EXPECT_EQ(location.volumeName, boot);
    EXPECT_EQ(location.volumesFolderPath, "");

    ExpectAll({
        {"/Volumes/" + boot + BWav(), 0, BWav()},
        {"/Volumes/no-such-volume-7c1e", -35, ""},
        {"/Volumes", 0, "/Volumes"},  // no slash: an ordinary (missing) item at the root
    });
}

TEST_F(PathResolverTest, FolderThatMayNotBeSearchedIsAPermissionError) {
    if (geteuid() == 0) GTEST_SKIP() << "permissions do not stop root";
    const fs::path locked = temp_.path() / "db" / "locked";
    fs::create_directories(locked);
    fs::permissions(locked, fs::perms::none);
    FileLocation location;
    EXPECT_EQ(Resolve("locked/x/a.wav", location), -54);
    fs::permissions(locked, fs::perms::owner_all);
}

}  // namespace
