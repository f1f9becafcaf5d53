// The start-up checks of the media layer: present on a machine with the packages installed, and
// absent when the test seams say so.
#include "platform/common/library_search.h"
#include "platform/media/media_layer.h"

#include "plugin/plugin_test_support.h"

#include <gtest/gtest.h>

namespace vd::platform {
namespace {

TEST(MediaLayer, PresentUnlessForcedAbsent) {
    vdtest::ScopedEnv media("VANDREL_MEDIA_LAYER", std::nullopt), jpeg("VANDREL_JPEG_EXPORT", std::nullopt);
    EXPECT_EQ(MediaLayerVersion(), kMediaLayerVersion);
    EXPECT_TRUE(JpegExporterPresent());
    {
        vdtest::ScopedEnv absent("VANDREL_MEDIA_LAYER", "absent");
        EXPECT_EQ(MediaLayerVersion(), 0u);
        EXPECT_TRUE(JpegExporterPresent());
    }
    {
        vdtest::ScopedEnv absent("VANDREL_JPEG_EXPORT", "absent");
        EXPECT_FALSE(JpegExporterPresent());
        EXPECT_EQ(MediaLayerVersion(), kMediaLayerVersion);
    }
    vdtest::ScopedEnv other("VANDREL_MEDIA_LAYER", "present");
    EXPECT_EQ(MediaLayerVersion(), kMediaLayerVersion);
}

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
