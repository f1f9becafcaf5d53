// A field keeps the kind it was made with: values of another kind are converted as the host family
// converts them or refused, never stored as an empty; `define` changes the kind of an empty field.
#include "vdhost_runner.h"

namespace vdtest {
namespace {

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
    EXPECT_EQ(vdhost({"fields"}).out, "S::Snd\ttext\n");
    ASSERT_EQ(vdhost({"set", "S::Snd", "\"\""}).status, 0);
    EXPECT_EQ(vdhost({"define", "S::Snd", "container"}).status, 0);
    EXPECT_EQ(vdhost({"fields"}).out, "S::Snd\tcontainer\n");
    EXPECT_EQ(vdhost({"set", "S::Snd", "Fixture_Streams ( \"snd \" ; \"sound bytes\" )"}).status, 0);
    EXPECT_EQ(vdhost({"get", "S::Snd"}).out, "snd  11\n");
}

TEST_F(FieldKinds, OtherKindsConvertOrAreRefused) {
    writeFile(folder / "kinds.vdcalc",
              "define T::Text text\ndefine T::Number number\ndefine T::Box container\n"
              "T::Text := 7 / 2\n"
              "T::Number := \"a1b2\"\n"
              "T::Box := \"image:/a.jpg\"\n"
              "print T::Text & \"|\" & ( T::Number + 1 ) & \"|\" & Fixture_Describe ( T::Box )\n");
    auto r = vdhost({"run", "kinds.vdcalc"});
    EXPECT_EQ(r.status, 0) << r.err;
    EXPECT_EQ(r.out, "3.5|13|type=6 empty=0 text=image:/a.jpg streams=\n");

    for (const char* refused : {"T::Number := \"none\"", "T::Number := Fixture_Streams ( \"JPEG\" ; \"x\" )",
                                "T::Box := 5", "T::Box := \"plain text\""}) {
        r = vdhost({"run", "-"}, {}, std::string(refused) + "\n");
        EXPECT_EQ(r.status, 4) << refused;
        EXPECT_NE(r.err.find("cannot hold"), std::string::npos) << r.err;
    }
    EXPECT_EQ(vdhost({"eval", "T::Number & \"|\" & Fixture_Describe ( T::Box )"}).out,
              "12|type=6 empty=0 text=image:/a.jpg streams=\n");
}

}  // namespace
}  // namespace vdtest
