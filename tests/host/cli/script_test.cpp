// vdhost scripts and the prompt: statements, variables, fields, files, and where failures point.
#include "vdhost_runner.h"

namespace vdtest {
namespace {

using Scripts = VdhostTest;

TEST_F(Scripts, StatementsAssignPrintWriteContinueAcrossLinesAndForgetTheirVariables) {
    writeFile(folder / "tour.vdcalc",
              "# a comment, then blank lines\n"
              "\n"
              "$name := \"World\"\n"
              "$$count := 2\n"
              "Greetings::Text := \"Hello, \" & $name\n"
              "print Greetings::Text & \" x\" & $$count\n"
              "Let ( [\n"
              "    a = 1 ;\n"
              "    b = \"two\n"
              "lines\" ] ;\n"
              "  a & b )\n"
              "write out.bin Fixture_Streams ( \"JPEG\" ; \"jpeg bytes\" )\n"
              "write \"with blank.txt\" \"text\"\n");
    auto r = vdhost({"run", "tour.vdcalc"});
    EXPECT_EQ(r.status, 0) << r.err;
    EXPECT_EQ(r.out, "Hello, World x2\n1two\nlines\n");
    EXPECT_EQ(readFile(folder / "out.bin"), "jpeg bytes");
    EXPECT_EQ(readFile(folder / "with blank.txt"), "text");
    // Variables last for one run, globals for the session: a new process starts without them.
    r = vdhost({"run", "-"}, {}, "$a := 5\n$$b := $a * 2\nprint $a + $$b\n");
    EXPECT_EQ(r.out, "15\n") << r.err;
    // A new process starts without them.
    EXPECT_EQ(vdhost({"eval", "IsEmpty ( $a ) and IsEmpty ( $$b )"}).out, "1\n");
}

TEST_F(Scripts, TheFirstFailingStatementStopsTheScriptAndNamesItsLine) {
    writeFile(folder / "bad.vdcalc", "print 1\n\nprint ( 2 +\n  * 3 )\nprint 4\n");
    auto r = vdhost({"run", "bad.vdcalc"});
    EXPECT_EQ(r.status, 2);
    EXPECT_EQ(r.out, "1\n");
    EXPECT_NE(r.err.find("bad.vdcalc: line 4, column 3"), std::string::npos) << r.err;

    writeFile(folder / "handler.vdcalc", "print 1\n$x := Fixture_Fail ( 12 )\nprint 2\n");
    r = vdhost({"run", "handler.vdcalc"});
    EXPECT_EQ(r.status, 3);
    EXPECT_EQ(r.out, "1\n");
    EXPECT_NE(r.err.find("handler.vdcalc: line 2"), std::string::npos) << r.err;

    EXPECT_EQ(vdhost({"run", "missing.vdcalc"}).status, 4);
    writeFile(folder / "syntax.vdcalc", "define Media::X colour\n");
    EXPECT_EQ(vdhost({"run", "syntax.vdcalc"}).status, 2);
}

TEST_F(Scripts, ThePromptReportsErrorsAndGoesOn) {
    auto r = vdhost({"repl"}, {}, "( 1 +\n 2 )\nFixture_Fail ( 3 )\n$x := 7\n$x * 6\nexit\nprint 99\n");
    EXPECT_EQ(r.status, 0);
    EXPECT_EQ(r.out, "3\n42\n");
    EXPECT_NE(r.err.find("Fixture_Fail failed with error 3"), std::string::npos) << r.err;
}

}  // namespace
}  // namespace vdtest
