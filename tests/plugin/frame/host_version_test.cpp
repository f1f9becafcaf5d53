// Which hosts the plug-in agrees to run in.
#include "frame/host_version.h"

#include "plugin/plugin_test_support.h"

#include <gtest/gtest.h>

namespace vd {
namespace {

TEST(HostVersion, CodesFromInterfaceVersionAndText) {
    struct Case {
        int16_t interfaceVersion;
        const char* text;
        uint16_t code;
        bool accepted;
    };
    const Case cases[] = {
        {50, "ProAdvanced 7.0v3", 703, true},
        {50, "Pro 8.0v1", 0, false},  // a version-8 text from an old interface is not believed
        {51, "Pro 8.0v1", 801, true},
        {52, "ProAdvanced 11.0v3", 1103, true},
        {52, "11.0v3", 1103, true},          // no blank: the whole text is the version
        {52, "Pro Advanced 11.0v3", 0, false}, // only the first word is dropped
        {52, "Pro 9.0", 900, true},           // no figure after the letter reads as 0
        {52, "Pro 9.0v-1000", 65436, false},  // 16-bit arithmetic, as hosts were always read
        {52, "Pro 9.0v99999999999999999999", 899, false},  // saturates rather than overflowing
        {52, "", 0, false},
        {17, "Pro 6.0", 601, true},
        {17, "Pro 6.0v1", 0, false},
        {11, "", 4, true},
        {16, "", 55, true},
    };
    for (const auto& c : cases) {
        uint16_t code = HostVersionCode(c.interfaceVersion, c.text);
        EXPECT_EQ(code, c.code) << c.interfaceVersion << " " << c.text;
        EXPECT_EQ(IsAcceptedHostVersion(code), c.accepted) << c.interfaceVersion << " " << c.text;
    }
}

TEST(HostVersion, AcceptedRangesHaveExactBounds) {
    const uint16_t accepted[] = {4, 5, 55, 601, 701, 799, 801, 859, 900, 999, 1000, 1009, 1100, 1199};
    const uint16_t refused[] = {0, 3, 6, 54, 56, 600, 602, 700, 800, 860, 899, 1010, 1050, 1099, 1200, 65535};
    for (auto code : accepted) EXPECT_TRUE(IsAcceptedHostVersion(code)) << code;
    for (auto code : refused) EXPECT_FALSE(IsAcceptedHostVersion(code)) << code;
}

TEST(HostVersion, TextIsReadUpToTwentyUnitsWithAStandInWhenEmpty) {
    vdtest::ScopedEnv unset("VDHOST_VERSION_TEXT", std::nullopt);
    EXPECT_EQ(HostVersionText(u"ProAdvanced 11.0v3"), "ProAdvanced 11.0v3");
    EXPECT_EQ(HostVersionText(u"123456789012345678901234"), "12345678901234567890");
    EXPECT_EQ(HostVersionText(nullptr), "");
    EXPECT_EQ(HostVersionText(u"Bad \xD800 text"), "");  // not text at all: no version

    vdtest::ScopedEnv set("VDHOST_VERSION_TEXT", "Pro 9.0v1");
    EXPECT_EQ(HostVersionText(u""), "Pro 9.0v1");
}

}  // namespace
}  // namespace vd
