// The database's location as the plug-in asks the host for it.
#include "container/database_location.h"
#include "container/reference_result.h"
#include "container_test_support.h"
#include "util/file_location.h"

#include <gtest/gtest.h>

namespace vdtest {
namespace {

TEST(DatabaseLocation, RemoteOnlyForPathsThatBeginWithFmnet) {
    struct Case { const char* path; bool remote; } cases[] = {
        {"fmnet:/host/a.vddb", true}, {"fmnet", true}, {"fmne", false},
        {"FMNET:/host/a", false}, {"file:/fmnet/a", false}, {"", false}};
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

TEST(DatabaseLocation, ReferenceTextsAreRelativeOnALocalDatabaseAndAbsoluteOnAHostedOne) {
    std::string text;
    {
        HostWithDatabase local;
        // (A file inside the database's folder is named from it: the insert functions' tests.) A file
        // beside the folder is still named from it; the size is unsigned.
        ASSERT_EQ(vd::container::ReferenceText(local.Folder().parent_path().string() + "/b.png", "image", 640,
                                               65535, text), 0);
        EXPECT_EQ(text.substr(0, text.find('\r', 15)), "size:640,65535\rimagemac:../b.png");
    }
    HostWithDatabase remote(true);
    ASSERT_EQ(vd::container::ReferenceText("/srv/a.wav", "file", 0, 0, text), 0);
    EXPECT_EQ(text, "size:0,0\rfilemac:/srv/a.wav\rfilemac:/srv/a.wav");
}

TEST(DatabaseLocation, WithoutAHostThereIsNoPath) {
    EXPECT_FALSE(vd::container::DatabasePath());
    std::string folder;
    EXPECT_EQ(vd::container::DatabaseLocation(folder), -108);
}

}  // namespace
}  // namespace vdtest
