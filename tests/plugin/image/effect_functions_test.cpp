// Vandrel_EffectApply and Vandrel_EffectDialog through the host: each effect against libvips's own
// command line doing the same operations on the same picture, the cross fade's ends, the scripted
// dialog's answer, and the refusals.
#include "image_test_support.h"

#include <support/process.h>

#include <algorithm>
#include <fstream>

namespace vdtest {
namespace {

// Every pixel its own colour, so a blur, an edge or a misplaced pixel shows.
Picture Gradient(int width, int height) {
    return MakePicture(width, height, [](int x, int y) {
        return Rgb{uint8_t(15 * x + 5), uint8_t(20 * y + 3), uint8_t((x * y * 7 + 40) % 256)};
    });
}

int LargestDifference(const Picture& a, const Picture& b) {
    if (a.width != b.width || a.height != b.height) return 256;
    int largest = 0;
    for (size_t i = 0; i < a.pixels.size(); ++i)
        largest = std::max({largest, std::abs(a.pixels[i].r - b.pixels[i].r), std::abs(a.pixels[i].g - b.pixels[i].g),
                            std::abs(a.pixels[i].b - b.pixels[i].b)});
    return largest;
}

class EffectFunctionsTest : public ImageSessionTest {
protected:
    FMX_Data Apply(const FMX_Data& picture, const std::string& description) {
        return Eval(u"Vandrel_EffectApply ( $a ; $b )", {picture, vdhost::makeTextUtf8(description)});
    }
    FMX_Data Apply(const FMX_Data& picture, const std::string& description, const FMX_Data& second) {
        return Eval(u"Vandrel_EffectApply ( $a ; $b ; $c )", {picture, vdhost::makeTextUtf8(description), second});
    }
    Picture PixelsOrFail(const FMX_Data& applied) {
        EXPECT_EQ(StreamTypes(applied), "VDIM|SIZE|JPEG");
        std::optional<Picture> p = PixelsOf(applied);
        EXPECT_TRUE(p) << vdhost::utf8Of(applied);
        return p.value_or(Picture{});
    }
    // Runs the vips commands in the test's folder ("in.png" is the picture) and reads "out.png".
    std::optional<Picture> ByVips(const std::vector<std::vector<std::string>>& commands) {
        for (std::vector<std::string> command : commands) {
            command.insert(command.begin(), programOnPath("vips"));
            const ProcessResult r = runProcess(command, {}, "", root_.path().string());
            EXPECT_EQ(r.status, 0) << command[1] << ": " << r.err;
        }
        return PixelsOf(vdhost::makeTextUtf8(Path("out.png")));
    }
};

TEST_F(EffectFunctionsTest, EveryEffectDrawsWhatLibvipsDrawsWithTheSameOperations) {
    if (programOnPath("vips").empty()) GTEST_SKIP() << "the vips command is not installed";
    const FMX_Data picture = ContainerWith("BMPf", BmpOf(Gradient(16, 12)));
    Write("in.png", StreamOf(Convert(picture, "PNGf"), "PNGf"));
    Write("emboss.mat", "3 3\n-1 -1 0\n-1 0 1\n0 1 1\n");
    Write("sepia.mat", "3 3\n0.393 0.769 0.189\n0.349 0.686 0.168\n0.272 0.534 0.131\n");
    using Commands = std::vector<std::vector<std::string>>;
    const std::vector<std::pair<std::string, Commands>> cases = {
        {"blur radius=2.5", {{"gaussblur", "in.png", "out.png", "2.5"}}},
        {"sharpen amount=2 radius=1.5", {{"sharpen", "in.png", "out.png", "--sigma", "1.5", "--m1", "2", "--m2", "2"}}},
        {"emboss",
         {{"conv", "in.png", "t.v", "emboss.mat", "--precision", "float"},
          {"linear", "t.v", "u.v", "1", "128"},
          {"cast", "u.v", "out.png", "uchar"}}},
        {"edges", {{"sobel", "in.png", "out.png"}}},
        {"grey", {{"colourspace", "in.png", "t.v", "b-w"}, {"colourspace", "t.v", "out.png", "srgb"}}},
        {"sepia", {{"recomb", "in.png", "t.v", "sepia.mat"}, {"cast", "t.v", "out.png", "uchar"}}},
        {"invert", {{"invert", "in.png", "out.png"}}},
        {"tint color=#a05020 amount=0.5",
         {{"colourspace", "in.png", "y.v", "b-w"},
          {"linear", "y.v", "t.v", std::to_string(0.5 * 0xA0 / 255.0) + " " + std::to_string(0.5 * 0x50 / 255.0) +
                                       " " + std::to_string(0.5 * 0x20 / 255.0), "0 0 0"},
          {"linear", "in.png", "i.v", "0.5", "0"},
          {"add", "i.v", "t.v", "s.v"},
          {"cast", "s.v", "out.png", "uchar"}}},
        {"brightness brightness=0.25 contrast=1.25",
         {{"linear", "in.png", "t.v", "1.25", std::to_string(128 - 128 * 1.25 + 255 * 0.25)},
          {"cast", "t.v", "out.png", "uchar"}}},
        {"gamma gamma=2.5", {{"gamma", "in.png", "out.png", "--exponent", "2.5"}}},
    };
    const Picture source = Gradient(16, 12);
    for (const auto& [description, commands] : cases) {
        const Picture ours = PixelsOrFail(Apply(picture, description));
        const std::optional<Picture> theirs = ByVips(commands);
        ASSERT_TRUE(theirs) << description;
        // The tint's factors pass through the command line as decimal text.
        EXPECT_LE(LargestDifference(ours, *theirs), description.starts_with("tint") ? 1 : 0) << description;
        EXPECT_GT(LargestDifference(ours, source), 5) << description << " changed nothing";
    }
}

TEST_F(EffectFunctionsTest, TheCrossFadeRunsFromTheFirstPictureToTheSecond) {
    const Picture first = Gradient(16, 12);
    const Picture second = MakePicture(16, 12, [](int x, int y) { return Rgb{uint8_t(250 - 9 * x), 77, uint8_t(13 * y)}; });
    const FMX_Data a = ContainerWith("BMPf", BmpOf(first)), b = ContainerWith("BMPf", BmpOf(second));
    EXPECT_EQ(LargestDifference(PixelsOrFail(Apply(a, "crossfade mix=0", b)), first), 0);
    EXPECT_EQ(LargestDifference(PixelsOrFail(Apply(a, "crossfade mix=1", b)), second), 0);
    const Picture half = PixelsOrFail(Apply(a, "crossfade mix=0.5", b));
    const Picture mean = MakePicture(16, 12, [&](int x, int y) {
        const Rgb p = first.At(x, y), q = second.At(x, y);
        return Rgb{uint8_t((p.r + q.r) / 2), uint8_t((p.g + q.g) / 2), uint8_t((p.b + q.b) / 2)};
    });
    EXPECT_LE(LargestDifference(half, mean), 1);

    // A second picture of another size is brought to the first's: a flat one stays flat.
    const Picture flat = MakePicture(5, 40, [](int, int) { return Rgb{10, 200, 90}; });
    const Picture faded = PixelsOrFail(Apply(a, "crossfade mix=1", ContainerWith("BMPf", BmpOf(flat))));
    EXPECT_EQ(LargestDifference(faded, MakePicture(16, 12, [](int, int) { return Rgb{10, 200, 90}; })), 0);

    EXPECT_EQ(vdhost::utf8Of(Apply(a, "crossfade mix=0.5")),
              "$-50:Vandrel_EffectApply: crossfade needs a second picture (container2)");
}

TEST_F(EffectFunctionsTest, BadDescriptionsAndPicturesAreRefusedWithTheReason) {
    const FMX_Data picture = ContainerWith("BMPf", BmpOf(Gradient(4, 4)));
    EXPECT_EQ(vdhost::utf8Of(Apply(picture, "blur radius=-1")),
              "$-50:Vandrel_EffectApply: blur's radius must be between 0.1 and 50, not -1");
    EXPECT_EQ(vdhost::utf8Of(Apply(picture, "<hex>00</hex>")),
              "$-50:Vandrel_EffectApply: the effect description is no settings text that can be read");
    EXPECT_EQ(vdhost::utf8Of(Apply(vdhost::makeTextUtf8(Path("missing.png")), "invert")),
              "$-43:Vandrel_EffectApply: Could not find referenced image file");
}

TEST_F(EffectFunctionsTest, TheScriptedDialogAnswersADescriptionTheEffectTakes) {
    const FMX_Data picture = ContainerWith("BMPf", BmpOf(Gradient(16, 12)));
    const std::string script = Write("answers.txt", "ok radius=2.5\ncancel\nok radius=80\nok\n");
    ScopedEnv ui("VANDREL_UI_SCRIPT", script);
    const std::string chosen = Text(u"Vandrel_EffectDialog ( \"blur\" ; $a )", {picture});
    ASSERT_TRUE(chosen.starts_with("<hex>")) << chosen;
    EXPECT_EQ(LargestDifference(PixelsOrFail(Apply(picture, chosen)), PixelsOrFail(Apply(picture, "blur radius=2.5"))), 0);

    EXPECT_EQ(Text(u"Vandrel_EffectDialog ( \"blur\" )"), "$-128:Vandrel_EffectDialog: Operation canceled by the user.");
    EXPECT_EQ(Text(u"Vandrel_EffectDialog ( \"blur\" )"),
              "$-50:Vandrel_EffectDialog: Wrong parameter(s). (the UI script gives radius 80; it goes from 0.1 to 50)");
    // A description starts the controls at its values; "ok" keeps them.
    const std::string kept = Text(u"Vandrel_EffectDialog ( $a )", {vdhost::makeTextUtf8(chosen)});
    EXPECT_EQ(kept, chosen);
    EXPECT_EQ(Text(u"Vandrel_EffectDialog ( \"swirl\" )"), "$-50:Vandrel_EffectDialog: there is no effect \"swirl\"; "
                                                          "the effects are blur, sharpen, emboss, edges, grey, sepia, "
                                                          "invert, tint, brightness, gamma, crossfade");
}

TEST_F(EffectFunctionsTest, WithNoDisplayAndNoScriptTheDialogFailsAtOnce) {
    ScopedEnv ui("VANDREL_UI_SCRIPT", std::nullopt), x("DISPLAY", std::nullopt), wayland("WAYLAND_DISPLAY", std::nullopt);
    EXPECT_EQ(Text(u"Vandrel_EffectDialog ( \"tint\" )"),
              "$-128:Vandrel_EffectDialog: Operation canceled by the user. (no dialog can be shown: no display, and no "
              "VANDREL_UI_SCRIPT)");
}

}  // namespace
}  // namespace vdtest
