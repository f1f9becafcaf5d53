// Vandrel_Amplify and Vandrel_Normalize: the sample rule (gain, limit, clipping, truncation,
// normalizing), the formats refused, and the functions' messages and temporary files.
#include "fmapi/errors/vds_error.h"
#include "sound/editing/amplify.h"
#include "sound_test_support.h"

#include <cstring>
#include <limits>

namespace vdtest {
namespace {

using namespace vd::media;
using namespace vd::sound;

// Amplifies native 16-bit samples given as 'sowt' (or, swapped, as 'twos'); answers the samples.
std::vector<int16_t> Amplified(std::vector<int16_t> samples, float gain, float limit, bool bigEndian = false) {
    std::vector<uint8_t> bytes(samples.size() * 2);
    for (size_t i = 0; i < samples.size(); ++i) {
        const uint16_t v = uint16_t(samples[i]);
        bytes[2 * i + (bigEndian ? 1 : 0)] = uint8_t(v);
        bytes[2 * i + (bigEndian ? 0 : 1)] = uint8_t(v >> 8);
    }
    const auto description = PcmSoundDescription(bigEndian ? FourCC("twos") : FourCC("sowt"), 2, 16, 44100);
    EXPECT_EQ(AmplifySamples(bytes, description, gain, limit), 0);
    for (size_t i = 0; i < samples.size(); ++i)
        samples[i] = int16_t(bigEndian ? (bytes[2 * i] << 8 | bytes[2 * i + 1]) : (bytes[2 * i + 1] << 8 | bytes[2 * i]));
    return samples;
}

TEST(AmplifySamplesTest, GainClipsAtTheLimitTruncatesTowardZeroAndNeedsSixteenBits) {
    using V = std::vector<int16_t>;
    EXPECT_EQ(Amplified({20000, -20000, 3, -3, 0, 100}, 2.0f, 1.0f), (V{32767, -32768, 6, -6, 0, 200}));
    // Limit 0.5: the range is -16384..16383.
    EXPECT_EQ(Amplified({20000, -20000, 16383, -16384}, 1.0f, 0.5f), (V{16383, -16384, 16383, -16384}));
    EXPECT_EQ(Amplified({3, -3, 5, -5}, 0.5f, 1.0f), (V{1, -1, 2, -2}));  // 1.5 → 1, -2.5 → -2
    // Limits outside 0..1 are brought inside: above 1 is 1, below 0 is 0 (everything becomes 0 or -1).
    EXPECT_EQ(Amplified({20000, -20000}, 2.0f, 7.0f), (V{32767, -32768}));
    EXPECT_EQ(Amplified({20000, -20000, 0}, 1.0f, -0.5f), (V{0, -1, 0}));
    EXPECT_EQ(Amplified({20000, -20000, 0}, std::numeric_limits<float>::infinity(), 1.0f), (V{32767, -32768, 0}));
    // Big-endian samples give the same values.
    EXPECT_EQ(Amplified({20000, -20000, 1234}, 2.0f, 1.0f, true), (V{32767, -32768, 2468}));
    // Only 16-bit PCM is amplified.
    std::vector<uint8_t> bytes(8, 0x40);
    EXPECT_EQ(AmplifySamples(bytes, PcmSoundDescription(FourCC("raw "), 1, 8, 44100), 2, 1), -4);
    EXPECT_EQ(AmplifySamples(bytes, PcmSoundDescription(FourCC("in24"), 1, 24, 44100), 2, 1), -2001);
    EXPECT_EQ(bytes, std::vector<uint8_t>(8, 0x40));  // refused samples are left as they were
}

TEST(AmplifySamplesTest, NormalizeBringsThePeakToFullScale) {
    using V = std::vector<int16_t>;
    EXPECT_EQ(Amplified({8192, -16384, 100}, 0, kNormalizeLimit), (V{16383, -32767, 199}));
    EXPECT_EQ(Amplified({0, 0, 0, 0}, 0, kNormalizeLimit), (V{0, 0, 0, 0}));  // silence: gain 1
    // -32768 has no absolute value in 16 bits and does not count: the gain stays 1.
    EXPECT_EQ(Amplified({-32768, 0, -32768, 0}, 0, kNormalizeLimit), (V{-32768, 0, -32768, 0}));
    EXPECT_EQ(Amplified({-32768, 16384}, 0, kNormalizeLimit), (V{-32768, 32767}));
    // The gain is single precision and the products are truncated: 32.767 × 1000 falls just short.
    EXPECT_EQ(Amplified({-1000, 1000}, 0, kNormalizeLimit, true), (V{-32766, 32766}));
}

using AmplifyFunctionTest = SoundSessionTest;

TEST_F(AmplifyFunctionTest, AmplifiedFileIsRenderedWithTheGainApplied) {
    writeFile(Path("tone.wav"), media::Pcm16Wav({1000, -1000, 20000, -20000, 16384, 0}, 2));
    vd::sound::SoundMovie input;
    input.movie = OpenedMovie(Path("tone.wav"));
    vd::media::Movie amplified;
    ASSERT_EQ(vd::sound::AmplifyMovie(input.movie, 2.0f, 1.0f, amplified), 0);
    EXPECT_EQ(RenderedSamples(std::move(amplified)), (std::vector<int16_t>{2000, -2000, 32767, -32768, 32767, 0}));

    // Through the host: one stored sound of the same length, a clean status, nothing left behind.
    EXPECT_EQ(SoundStreamOf(Eval(u"Vandrel_Amplify ( \"tone.wav\" ; 2 ; 0.5 )")).size(), 42u + 3);
    EXPECT_EQ(Text(u"Vandrel_GetLastError"), "$0:Vandrel_Amplify: No error.");
    EXPECT_EQ(SoundStreamOf(Eval(u"Vandrel_Normalize ( \"tone.wav\" )")).size(), 42u + 3);
    EXPECT_EQ(Text(u"Vandrel_GetLastError"), "$0:Vandrel_Normalize: No error.");
    EXPECT_TRUE(LeftoverTemporaryFiles().empty());
}

TEST_F(AmplifyFunctionTest, CompressedInputsAreAmplifiedFromATemporaryCopyThatIsThenGone) {
    VD_REQUIRE_FFMPEG();
    writeFile(Path("tone.wav"), media::SineWav(22050, 2));
    media::Ffmpeg({"-i", Path("tone.wav"), "-c:a", "libmp3lame", Path("tone.mp3")});
    media::Ffmpeg({"-i", Path("tone.wav"), "-c:a", "aac", Path("tone.m4a")});
    writeFile(Path("deep.wav"), media::SineWav(22050, 2, 44100, 24));  // PCM, but converted first too
    Eval(u"Vandrel_CreateSound ( \"sine\" ; 0.01 )");  // the media libraries are loaded by now
    const int descriptors = media::OpenDescriptors();
    for (const char16_t* call : {u"Vandrel_Amplify ( \"tone.mp3\" ; 0.5 )", u"Vandrel_Normalize ( \"tone.m4a\" )",
                                 u"Vandrel_Amplify ( \"deep.wav\" ; 0.5 )"}) {
        EXPECT_NEAR(double(SoundStreamOf(Eval(call)).size()), 42.0 + 22050, 2500);
        EXPECT_TRUE(LeftoverTemporaryFiles().empty());
        EXPECT_EQ(media::OpenDescriptors(), descriptors);
    }
}

TEST_F(AmplifyFunctionTest, FailuresAnswerTheirStatusTexts) {
    writeFile(Path("eight.wav"), media::SineWav(100, 1, 44100, 8));
    EXPECT_EQ(Text(u"Vandrel_Amplify ( \"eight.wav\" ; 2 )"), "$-4:Vandrel_Amplify: Could not amplify sound.");
    EXPECT_EQ(Text(u"Vandrel_Amplify ( \"missing.wav\" ; 2 )"), "$-43:Vandrel_Amplify: Could not get parameter #1 as sound.");
    EXPECT_EQ(Text(u"Vandrel_Amplify ( \"\" ; 2 )"), "$-50:Vandrel_Amplify: Could not get parameter #1 as sound.");
    // Normalize answers what Amplify answered, and tells the error as its own.
    EXPECT_EQ(Text(u"Vandrel_Normalize ( \"eight.wav\" )"), "$-4:Vandrel_Amplify: Could not amplify sound.");
    EXPECT_EQ(Text(u"Vandrel_GetLastError"), "$-4:Vandrel_Normalize: Could not amplify sound.");
    EXPECT_TRUE(LeftoverTemporaryFiles().empty());

    // A host that does not check counts reaches the functions' own checks.
    writeFile(Path("tone.wav"), media::SineWav(100, 2));
    const auto text = [](const char* s) { return vdhost::makeTextUtf8(s); };
    const auto nan = vdhost::makeNumber(std::numeric_limits<double>::quiet_NaN());
    EXPECT_EQ(CallDirectly(11, {text("tone.wav")}), "$-50:Vandrel_Amplify: This function requires 2 or 3 parameters.");
    EXPECT_EQ(CallDirectly(11, {text("tone.wav"), nan}), "$-50:Vandrel_Amplify: Could not get parameter #2 as number.");
    EXPECT_EQ(CallDirectly(11, {text("tone.wav"), vdhost::makeNumber(2), nan}),
              "$-50:Vandrel_Amplify: Could not get parameter #3 as number.");
    EXPECT_EQ(CallDirectly(11, {text("tone.wav"), vdhost::makeNumber(2), vdhost::makeNumber(1), nan}), "");
    EXPECT_EQ(vd::gLastError.StatusText(), "$0:Vandrel_Amplify: No error.");  // a fourth is not read
    EXPECT_EQ(CallDirectly(26, {text("a"), text("b")}), "$-50:Vandrel_Normalize: This function requires 1 parameter.");
}

}  // namespace
}  // namespace vdtest
