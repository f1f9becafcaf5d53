// Finding the media libraries the way the dynamic linker would. (What start-up does without them is
// the start-up tests'.)
#include "platform/common/library_search.h"

#include "plugin/plugin_test_support.h"

#include <gtest/gtest.h>

namespace vd::platform {
namespace {

TEST(LibrarySearch, FindsWhatTheLinkerWouldAndOnlyThat) {
    auto folders = LibrarySearchFolders();
    EXPECT_FALSE(FindLibrary("libc.so.6", folders).empty());
    EXPECT_TRUE(FindLibrary("libvandrel-no-such-library.so.1", folders).empty());

    vdtest::ScopedEnv path("LD_LIBRARY_PATH", std::string(VD_BUILD_DIR) + "/lib::relative/dir");
    folders = LibrarySearchFolders();
    ASSERT_FALSE(folders.empty());
    EXPECT_EQ(folders.front(), std::string(VD_BUILD_DIR) + "/lib");
    EXPECT_EQ(FindLibrary("libFMWrapper.so", folders), std::string(VD_BUILD_DIR) + "/lib/libFMWrapper.so");
    for (const auto& folder : folders) EXPECT_EQ(folder.front(), '/') << folder;
}

}  // namespace
}  // namespace vd::platform
