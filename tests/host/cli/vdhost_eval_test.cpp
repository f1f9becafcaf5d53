// vdhost's commands as a user runs them: results, exit statuses, messages and files.
#include "vdhost_runner.h"

namespace vdtest {
namespace {

using Eval = VdhostTest;

TEST_F(Eval, ShowsTextNumbersAndContainersAndExitsZero) {
    auto r = vdhost({"eval", "Fixture_Echo ( \"a\" ; 2 ; 1/4 )"});
    EXPECT_EQ(r.status, 0) << r.err;
    EXPECT_EQ(r.out, "a|2|0.25\n");

    // Carriage returns are shown as line breaks unless --raw.
    EXPECT_EQ(vdhost({"eval", "\"a¶b\""}).out, "a\nb\n");
    EXPECT_EQ(vdhost({"--raw", "eval", "\"a¶b\""}).out, "a\rb\n");

    r = vdhost({"eval", "Fixture_Streams ( \"JPEG\" ; \"abc\" ; \"FNAM\" ; \"pic.jpg\" )"});
    EXPECT_EQ(r.status, 0) << r.err;
    EXPECT_EQ(r.out, "JPEG 3\nFNAM 8 pic.jpg\n");
}

TEST_F(Eval, FailuresGiveDistinctExitStatusesAndMessagesOnStderr) {
    auto r = vdhost({"eval", "Fixture_Fail ( 7 )"});
    EXPECT_EQ(r.status, 3);
    EXPECT_NE(r.err.find("Fixture_Fail failed with error 7"), std::string::npos) << r.err;
    EXPECT_EQ(r.out, "");

    r = vdhost({"eval", "1 +\n(2 * "});
    EXPECT_EQ(r.status, 2);
    EXPECT_NE(r.err.find("line 2"), std::string::npos) << r.err;

    // The host refuses a call whose count lies outside the registered range.
    r = vdhost({"eval", "Fixture_Describe ( 1 ; 2 )"});
    EXPECT_EQ(r.status, 2);

    EXPECT_EQ(vdhost({"frobnicate"}).status, 1);

    // A file that is not a database is named and left as it was (the database tests check how).
    writeFile(db(), "this is not a database, just some bytes\n");
    r = vdhost({"set", "T::F", "1"});
    EXPECT_EQ(r.status, 4);
    EXPECT_NE(r.err.find("Test.vddb"), std::string::npos) << r.err;
    EXPECT_EQ(readFile(db()), "this is not a database, just some bytes\n");
}

TEST_F(Eval, OutWritesTheFirstStreamOrTheText) {
    auto out = folder / "picture.jpg";
    auto r = vdhost({"--out", out.string(), "eval", "Fixture_Streams ( \"FNAM\" ; \"x.jpg\" ; \"JPEG\" ; \"abc\" )"});
    EXPECT_EQ(r.status, 0) << r.err;
    EXPECT_EQ(readFile(out), "abc");

    // Text gets line feeds, as the terminal shows it; --raw keeps the carriage returns.
    r = vdhost({"--out", out.string(), "eval", "\"é¶\""});
    EXPECT_EQ(readFile(out), "\xC3\xA9\n");
    r = vdhost({"--raw", "--out", out.string(), "eval", "\"é¶\""});
    EXPECT_EQ(readFile(out), "\xC3\xA9\r");

    // A target that cannot be written is reported, and nothing is left behind.
    r = vdhost({"--out", (folder / "missing" / "x").string(), "eval", "1"});
    EXPECT_EQ(r.status, 4);
    EXPECT_FALSE(std::filesystem::exists(folder / "missing"));
}

TEST_F(Eval, ContainersSurviveTheDatabaseAcrossProcesses) {
    auto r = vdhost({"set", "Media::Picture",
                     "Fixture_Streams ( \"JPEG\" ; \"\\\"bytes\\\"\" ; \"SIZE\" ; \"wxyz\" ; \"FNAM\" ; \"Bild ä.jpg\" )"});
    ASSERT_EQ(r.status, 0) << r.err;
    ASSERT_TRUE(std::filesystem::exists(db()));

    r = vdhost({"eval", "Fixture_Describe ( Media::Picture )"});
    EXPECT_EQ(r.status, 0) << r.err;
    EXPECT_EQ(r.out, "type=6 empty=0 text= streams=JPEG:\"bytes\",SIZE:wxyz,FNAM:Bild ä.jpg\n");

    r = vdhost({"get", "Media::Picture"});
    EXPECT_EQ(r.out, "JPEG 7\nSIZE 4\nFNAM 12 Bild ä.jpg\n");

}

TEST_F(Eval, FilePathIsTheDatabaseLocalOrRemote) {
    auto r = vdhost({"eval", "Fixture_Evaluate ( \"Get ( FilePath )\" )"});
    EXPECT_EQ(r.out, "file:" + std::filesystem::canonical(folder.path()).string() + "/Test.vddb\n");
    r = vdhost({"--remote", "server.example", "eval", "Fixture_Evaluate ( \"Get ( FilePath )\" )"});
    EXPECT_EQ(r.out, "fmnet:/server.example/Test.vddb\n");
    // An evaluation that fails inside the host reaches the plug-in as an error code.
    r = vdhost({"eval", "Fixture_Evaluate ( \"1 +\" )"});
    EXPECT_EQ(r.out, "error 1200\n");
    r = vdhost({"eval", "Fixture_Evaluate ( \"Fixture_Fail ( 9 )\" )"});
    EXPECT_EQ(r.out, "error 9\n");
}

TEST_F(Eval, EveryCommandHasHelp) {
    for (const char* command : {"eval", "run", "repl", "set", "get", "define", "functions"}) {
        auto r = vdhost({command, "--help"});
        EXPECT_EQ(r.status, 0) << command;
        EXPECT_NE(r.out.find(std::string("vdhost [options] ") + command), std::string::npos) << command;
    }
    EXPECT_NE(vdhost({"--help"}).out.find("Exit status"), std::string::npos);
}

// A field keeps the kind it was made with: values of another kind are converted as the host family
// converts them or refused, never stored as an empty; `define` changes the kind of an empty field.
using FieldKinds = VdhostTest;

TEST_F(FieldKinds, ASoundIntoATextFieldIsRefusedAndTheFieldKeepsItsValue) {
    // A function's status text made the field a text field.
    ASSERT_EQ(vdhost({"set", "S::Snd", "\"$-43:Vandrel_Normalize: File not found.\""}).status, 0);
    auto r = vdhost({"set", "S::Snd", "Fixture_Streams ( \"snd \" ; \"sound bytes\" )"});
    EXPECT_EQ(r.status, 4);
    EXPECT_NE(r.err.find("Text field S::Snd cannot hold a container (\"snd \")"), std::string::npos) << r.err;
    EXPECT_EQ(vdhost({"get", "S::Snd"}).out, "$-43:Vandrel_Normalize: File not found.\n");

    // Its kind changes only once it is empty.
    r = vdhost({"define", "S::Snd", "container"});
    EXPECT_EQ(r.status, 4);
    EXPECT_NE(r.err.find("holds data"), std::string::npos) << r.err;
    ASSERT_EQ(vdhost({"set", "S::Snd", "\"\""}).status, 0);
    EXPECT_EQ(vdhost({"define", "S::Snd", "container"}).status, 0);
    EXPECT_EQ(vdhost({"fields"}).out, "S::Snd\tcontainer\n");
    EXPECT_EQ(vdhost({"set", "S::Snd", "Fixture_Streams ( \"snd \" ; \"sound bytes\" )"}).status, 0);
    EXPECT_EQ(vdhost({"get", "S::Snd"}).out, "snd  11\n");
}

TEST_F(FieldKinds, OtherKindsConvertOrAreRefused) {
    writeFile(folder / "kinds.vdcalc",
              "define T::Text text\ndefine T::Number number\ndefine T::Box container\n"
              "T::Text := 7 / 2\nT::Number := \"a1b2\"\nT::Box := \"image:/a.jpg\"\n"
              "print T::Text & \"|\" & ( T::Number + 1 ) & \"|\" & Fixture_Describe ( T::Box )\n");
    auto r = vdhost({"run", "kinds.vdcalc"});
    EXPECT_EQ(r.status, 0) << r.err;
    EXPECT_EQ(r.out, "3.5|13|type=6 empty=0 text=image:/a.jpg streams=\n");

    for (const char* refused : {"T::Number := \"none\"", "T::Box := 5", "T::Box := \"plain text\""}) {
        r = vdhost({"run", "-"}, {}, std::string(refused) + "\n");
        EXPECT_EQ(r.status, 4) << refused;
        EXPECT_NE(r.err.find("cannot hold"), std::string::npos) << r.err;
    }
    EXPECT_EQ(vdhost({"eval", "T::Number & \"|\" & Fixture_Describe ( T::Box )"}).out,
              "12|type=6 empty=0 text=image:/a.jpg streams=\n");
}

}  // namespace
}  // namespace vdtest
