// Vandrel_FadeSound: how the times and the level are made to fit the sound, the ramp at its ends
// and in its middle, the samples outside it, and the function's failures.
#include "sound/editing/fade.h"
#include "sound_test_support.h"

namespace vdtest {
namespace {

using vd::sound::Fade;
using vd::sound::FadeRequest;
using vd::sound::SanitizeFade;

constexpr uint32_t kSecond = 0x10000;

FadeRequest Request(double start, double end, float level, bool fadeIn) {
    auto time = [](double s) { return vd::util::SignedFixedTime{uint32_t(std::abs(s) * kSecond), s < 0}; };
    return {time(start), time(end), level, fadeIn};
}

// The fade made for a ten-second movie of time scale 600, as "start..end s: from>to".
std::string Sanitized(const FadeRequest& request) {
    Fade f;
    EXPECT_EQ(SanitizeFade(request, 6000, 600, f), 0);
    char text[64];
    std::snprintf(text, sizeof text, "%g..%g s: %d>%d", double(f.start) / kSecond, double(f.end) / kSecond,
                  int(f.fromVolume), int(f.toVolume));
    return text;
}

TEST(SanitizeFadeTest, TimesCountBackFromTheEndAndLevelsFitTheDirection) {
    EXPECT_EQ(Sanitized(Request(-2, 0, 1, false)), "0..8 s: 255>0");  // start 8 s, end 0 s: ordered 0 → 8 s
    EXPECT_EQ(Sanitized(Request(2, -1, 0.5f, true)), "2..9 s: 0>127");  // 255 × 0.5, truncated
    // A start beyond the sound becomes its beginning, an end beyond it the end; -12 s is before 0.
    EXPECT_EQ(Sanitized(Request(11, 30, 1, true)), "0..10 s: 0>255");
    EXPECT_EQ(Sanitized(Request(-12, -12, 1, true)), "0..10 s: 0>255");
    // Levels outside 0 to 1 depend on the direction.
    EXPECT_EQ(Sanitized(Request(0, 1, 1.5f, true)), "0..1 s: 0>0");  // fade in to nothing
    EXPECT_EQ(Sanitized(Request(0, 1, -0.1f, false)), "0..1 s: 255>0");
    EXPECT_EQ(Sanitized(Request(0, 1, 0.0f, false)), "0..1 s: 0>0");
    Fade fade;
    EXPECT_EQ(SanitizeFade(Request(0, 1, 1, true), 6000, 0, fade), -50);
}

using FadeSoundTest = SoundSessionTest;

TEST_F(FadeSoundTest, RampRunsFromStartToEndAndLeavesTheRestAlone) {
    writeFile(Path("flat.wav"), media::Pcm16Wav(Constant(20000, 4 * 44100), 2));
    vd::media::Movie movie = OpenedMovie(Path("flat.wav"));
    Fade fade;
    ASSERT_EQ(SanitizeFade(Request(1, 3, 1, true), movie.Duration(), movie.timeScale, fade), 0);
    vd::media::RenderOptions options;
    ASSERT_EQ(vd::sound::FadeOptions(movie, fade, options), 0);
    const std::vector<int16_t> s = RenderedSamples(std::move(movie), options);
    ASSERT_EQ(s.size(), 2u * 4 * 44100);
    auto at = [&](double seconds) { return s[2 * size_t(seconds * 44100)]; };
    EXPECT_EQ(at(0.5), 20000);                        // before the ramp: the track's own volume
    EXPECT_EQ(at(1.0), 0);                            // the ramp's start
    EXPECT_NEAR(at(2.0), 20000 * 127.5 / 256, 2);     // its middle: half of 255 on the 256 scale
    EXPECT_NEAR(s[2 * (3 * 44100 - 1)], 20000 * 255.0 / 256, 2);  // its end
    EXPECT_EQ(at(3.0), 20000);                        // after it: unchanged again
    EXPECT_EQ(s.back(), 20000);
    for (size_t n = 44101; n < 3 * 44100; n += 1009) ASSERT_GE(s[2 * n], s[2 * (n - 1)]);

    // Through the host: the same length stored, nothing left behind.
    EXPECT_EQ(SoundStreamOf(Eval(u"Vandrel_FadeSound ( \"flat.wav\" ; -2 ; 0 ; 1 ; 0 )")).size(), 42u + 4 * 44100);
    EXPECT_EQ(Text(u"Vandrel_GetLastError"), "$0:Vandrel_FadeSound: No error.");
    EXPECT_TRUE(LeftoverTemporaryFiles().empty());
}

TEST_F(FadeSoundTest, MpegFourSoundIsFadedFromAPcmCopy) {
    VD_REQUIRE_FFMPEG();
    writeFile(Path("tone.wav"), media::SineWav(44100, 2));
    media::Ffmpeg({"-i", Path("tone.wav"), "-c:a", "aac", Path("tone.m4a")});
    media::Ffmpeg({"-i", Path("tone.wav"), "-c:a", "libmp3lame", Path("tone.mp3")});
    for (const char16_t* call : {u"Vandrel_FadeSound ( \"tone.m4a\" ; 0 ; 0.5 ; 1 ; 1 )",
                                 u"Vandrel_FadeSound ( \"tone.mp3\" ; 0.5 ; -0 ; 1 ; 0 )"}) {
        EXPECT_NEAR(double(SoundStreamOf(Eval(call)).size()), 42.0 + 44100, 3000);
        EXPECT_EQ(Text(u"Vandrel_GetLastError"), "$0:Vandrel_FadeSound: No error.");
        EXPECT_TRUE(LeftoverTemporaryFiles().empty());
    }
}

TEST_F(FadeSoundTest, ArgumentFailuresAnswerTheirStatusTexts) {
    writeFile(Path("tone.wav"), media::SineWav(4410, 2));
    EXPECT_EQ(Text(u"Vandrel_FadeSound ( \"gone.wav\" ; 0 ; 1 ; 1 ; 1 )"),
              "$-43:Vandrel_FadeSound: Could not get parameter #1 as sound.");
    EXPECT_EQ(Text(u"Vandrel_FadeSound ( \"tone.wav\" ; \"x\" ; 1 ; 1 ; 1 )"),
              "$-50:Vandrel_FadeSound: Could not get parameter #2 as time.");
    EXPECT_EQ(Text(u"Vandrel_FadeSound ( \"tone.wav\" ; \"-0:01\" ; \"1:99\" ; 1 ; 1 )"),
              "$-50:Vandrel_FadeSound: Could not get parameter #3 as time.");
    // A sound from a container has no file to name its format, and is faded as it is.
    EXPECT_EQ(SoundStreamOf(Eval(u"Vandrel_FadeSound ( Vandrel_CreateSound ( \"sine\" ; 0.5 ) ; 0 ; 0.25 ; 1 ; 1 )")).size(),
              42u + 22050);
    EXPECT_TRUE(LeftoverTemporaryFiles().empty());
}

}  // namespace
}  // namespace vdtest
