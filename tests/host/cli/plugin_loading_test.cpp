// Plug-ins as the host loads them: start-up answers, what the host tells them, their strings and
// memory blocks.
#include "vdhost_runner.h"

namespace vdtest {
namespace {

using Loading = VdhostTest;

TEST_F(Loading, StartedPluginsListTheirFunctionsWithTheirStrings) {
    auto r = vdhost({"functions"});
    EXPECT_EQ(r.status, 0) << r.err;
    EXPECT_NE(r.out.find("Fixture (Fixture.fmxplugin): Exercises the host in tests. [FXTR1nnnnnn]\n"), std::string::npos)
        << r.out;
    EXPECT_NE(r.out.find("  1\tFixture_Echo\t0..\t0xFF01\tFixture_Echo ( value ... )\n"), std::string::npos) << r.out;
    EXPECT_NE(r.out.find("  3\tFixture_Describe\t1..1\t0xFF01\tFixture_Describe ( value )\n"), std::string::npos);
}

TEST_F(Loading, APluginThatRefusesToStartIsReportedAndNotUsed) {
    for (const char* answer : {"-1", "-2"}) {
        auto r = vdhost({"eval", "Fixture_Echo ( 1 )"}, {{"VDFIXTURE_STARTUP", answer}});
        EXPECT_EQ(r.status, 2) << answer;
        EXPECT_NE(r.err.find(std::string("plug-in Fixture refused to start (") + answer + ")"), std::string::npos)
            << r.err;
        EXPECT_NE(r.err.find("Unknown function"), std::string::npos) << r.err;
    }
    auto r = vdhost({"eval", "Fixture_Echo ( 1 )"}, {{"VDFIXTURE_STARTUP", "52"}});
    EXPECT_EQ(r.status, 2);  // answered 52 but registered nothing: it is used, with no functions
    EXPECT_EQ(r.err.find("refused"), std::string::npos) << r.err;
}

TEST_F(Loading, TheHostTellsItsVersionsAndBundleAndKeepsThePluginsMemoryBlocks) {
    auto r = vdhost({"eval", "Fixture_HostInfo"});
    std::string bundle = std::filesystem::absolute(std::filesystem::path(VD_FIXTURE_PLUGIN_DIR) / "Fixture.fmxplugin").string();
    EXPECT_EQ(r.out, "52|ProAdvanced 11.0v3|" + bundle + "\n");
    r = vdhost({"--interface-version", "60", "--host-version", "Pro 9.0v1", "eval", "Fixture_HostInfo"});
    EXPECT_EQ(r.out, "60|Pro 9.0v1|" + bundle + "\n");
    // Memory blocks hold what the plug-in writes.
    r = vdhost({"eval", "Fixture_Legacy ( \"first\" ) & \"/\" & Fixture_Legacy ( \"second, longer\" )"});
    EXPECT_EQ(r.out, "first/second, longer\n") << r.err;
}

TEST_F(Loading, MissingFoldersAndBrokenBundlesAreReportedNotFatal) {
    std::filesystem::create_directories(folder / "plugins" / "Broken.fmxplugin");
    writeFile(folder / "plugins" / "Broken.fmxplugin" / "Broken.fmx", "not an ELF file");
    auto r = runProcess({VDHOST_EXE, "--db", db().string(), "--plugins", (folder / "plugins").string(), "--plugins",
                         (folder / "nowhere").string(), "eval", "1 + 1"});
    EXPECT_EQ(r.status, 0);
    EXPECT_EQ(r.out, "2\n");
    EXPECT_NE(r.err.find("Broken.fmxplugin"), std::string::npos) << r.err;
    EXPECT_NE(r.err.find("nowhere"), std::string::npos) << r.err;
}

}  // namespace
}  // namespace vdtest
