// Records from the command line and from scripts: new-record, goto and records, and the
// calculation functions NewRecord, GoToRecord and CurrentRecord.
#include "vdhost_runner.h"

namespace vdtest {
namespace {

using Records = VdhostTest;

TEST_F(Records, CommandsMakeChooseAndListRecordsAcrossRuns) {
    ASSERT_EQ(vdhost({"set", "Notes::Body", "\"first\""}).status, 0);
    auto r = vdhost({"new-record", "Notes"});
    EXPECT_EQ(r.status, 0) << r.err;
    EXPECT_EQ(r.out, "2\n");
    ASSERT_EQ(vdhost({"set", "Notes::Body", "\"second\""}).status, 0);
    EXPECT_EQ(vdhost({"records", "Notes"}).out, "1\n2\tcurrent\n");

    EXPECT_EQ(vdhost({"goto", "Notes", "1"}).status, 0);
    EXPECT_EQ(vdhost({"get", "Notes::Body"}).out, "first\n");
    r = vdhost({"goto", "Notes", "5"});
    EXPECT_EQ(r.status, 4);
    EXPECT_EQ(r.err, "vdhost: Table Notes has no record 5\n");
    EXPECT_EQ(vdhost({"goto", "Notes", "two"}).status, 1);
    EXPECT_EQ(vdhost({"get", "Notes::Body"}).out, "first\n") << "a failed goto leaves the current record";
}

TEST_F(Records, AScriptMakesRecordsWithNewRecordAndComesBackToThem) {
    writeFile(folder / "make.vdcalc",
              "$first := NewRecord ( \"Items\" )\n"
              "Items::Name := \"apple\"\n"
              "$second := NewRecord ( \"Items\" )\n"
              "Items::Name := \"pear\"\n"
              "print $first & \" \" & $second & \" \" & CurrentRecord ( \"Items\" )\n"
              "print GoToRecord ( \"Items\" ; $first ) & \" \" & Items::Name\n");
    auto r = vdhost({"run", "make.vdcalc"});
    EXPECT_EQ(r.status, 0) << r.err;
    EXPECT_EQ(r.out, "1 2 2\n1 apple\n");
    EXPECT_EQ(vdhost({"records", "Items"}).out, "1\tcurrent\n2\n");

    r = vdhost({"eval", "GoToRecord ( \"Items\" ; 1.5 )"});
    EXPECT_EQ(r.status, 2);
    EXPECT_NE(r.err.find("GoToRecord needs a record id"), std::string::npos) << r.err;
    EXPECT_EQ(vdhost({"eval", "GoToRecord ( \"Items\" ; 3 )"}).status, 4);
}

}  // namespace
}  // namespace vdtest
