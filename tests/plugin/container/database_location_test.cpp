// The database's location as the plug-in asks the host for it, and the reference texts it writes.
#include "container/database_location.h"
#include "container/reference_result.h"
#include "container_test_support.h"
#include "util/file_location.h"

#include <gtest/gtest.h>

namespace vdtest {
namespace {

TEST(DatabaseLocation, RemoteOnlyForPathsThatBeginWithFmnet) {
    struct Case {
        const char* path;
        bool remote;
    } cases[] = {{"fmnet:/host/a.vddb", true}, {"fmnet", true},          {"fmne", false},
                 {"FMNET:/host/a", false},     {"file:/fmnet/a", false}, {"", false}};
    for (const auto& c : cases) EXPECT_EQ(vd::container::IsRemoteDatabasePath(c.path), c.remote) << c.path;
}

TEST(DatabaseLocation, LocalDatabasesGiveTheirFolderAndRemoteOnesSayRemote) {
    HostWithDatabase local;
    std::string folder;
    EXPECT_EQ(vd::container::DatabaseLocation(folder), vd::container::kLocalDatabase);
    EXPECT_EQ(folder, local.Folder().string());

    // References resolve against that folder.
    std::filesystem::create_directories(local.folder / "sounds");
    writeFile(local.folder / "sounds" / "a.wav", "x");
    vd::util::FileLocation location;
    ASSERT_EQ(vd::container::ResolveAgainstDatabase("moviemac:sounds/a.wav", location), 0);
    EXPECT_EQ(vd::util::FullPath(location), (local.Folder() / "sounds" / "a.wav").string());
    ASSERT_EQ(vd::container::ResolveAgainstDatabase("sounds/new.wav", location), 0);
    EXPECT_EQ(location.leafName, "new.wav");
    local.session.reset();

    HostWithDatabase remote(true);
    EXPECT_EQ(vd::container::DatabaseLocation(folder), vd::container::kRemoteDatabase);
    // Relative texts have nothing to be relative to on a hosted database.
    EXPECT_NE(vd::container::ResolveAgainstDatabase("sounds/a.wav", location), 0);
    ASSERT_EQ(vd::container::ResolveAgainstDatabase((remote.Folder() / "x.wav").string(), location), 0);
    EXPECT_EQ(location.leafName, "x.wav");
}

TEST(DatabaseLocation, WithoutAHostThereIsNoPath) {
    EXPECT_FALSE(vd::container::DatabasePath());
    std::string folder;
    EXPECT_EQ(vd::container::DatabaseLocation(folder), -108);
}

TEST(ReferenceText, RelativeForLocalDatabasesAbsoluteForRemoteOnes) {
    HostWithDatabase local;
    std::string file = (local.Folder() / "photos" / "a b.jpg").string();
    std::string text;
    ASSERT_EQ(vd::container::ReferenceText(file, "image", 640, 480, text), 0);
    EXPECT_EQ(text, "size:640,480\rimagemac:photos/a b.jpg\rimagemac:" + file);

    std::string outside = (local.Folder().parent_path() / "elsewhere" / "b.mov").string();
    ASSERT_EQ(vd::container::ReferenceText(outside, "movie", 0, 0, text), 0);
    EXPECT_EQ(text, "size:0,0\rmoviemac:../elsewhere/b.mov\rmoviemac:" + outside);
    local.session.reset();

    HostWithDatabase remote(true);
    ASSERT_EQ(vd::container::ReferenceText("/srv/files/c.pdf", "file", 0, 0, text), 0);
    EXPECT_EQ(text, "size:0,0\rfile:/srv/files/c.pdf\rfilemac:/srv/files/c.pdf");
}

TEST(ReferenceText, FilesOnAnotherVolumeFallBackToTheAbsoluteForm) {
    // /proc is never a volume of its own, so pick a real mount other than the database's if there is one.
    std::string relative;
    EXPECT_EQ(vd::container::RelativePath("/a/b", "/a/c/d.wav", relative), 0);
    EXPECT_EQ(relative, "../c/d.wav");
    HostWithDatabase local;
    std::string dbVolumeFolder = local.Folder().string();
    for (const char* candidate : {"/dev/shm", "/run", "/boot", "/mnt", "/media"}) {
        std::string r;
        if (vd::container::RelativePath(dbVolumeFolder, std::string(candidate) + "/x.wav", r) == -35) {
            std::string text;
            ASSERT_EQ(vd::container::ReferenceText(std::string(candidate) + "/x.wav", "movie", 0, 0, text), 0);
            EXPECT_EQ(text, std::string("size:0,0\rmovie:") + candidate + "/x.wav\rmoviemac:" + candidate + "/x.wav");
            return;
        }
    }
    GTEST_SKIP() << "this machine has a single volume";
}

}  // namespace
}  // namespace vdtest
