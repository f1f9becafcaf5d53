// Vandrel_AppendSound, Vandrel_MixSounds and Vandrel_ExtractSound: lengths and contents of what
// they make, the averaging rule, and their failures.
#include "sound/editing/mix_sounds.h"
#include "sound/editing/selection_edits.h"
#include "sound_test_support.h"

#include <cstring>

namespace vdtest {
namespace {

using V = std::vector<int16_t>;

class CombineSoundsTest : public SoundSessionTest {
protected:
    // A second of one value (a) and three seconds of another (b), both stereo 44.1 kHz.
    void MakeOneAndThree() {
        writeFile(Path("one.wav"), media::Pcm16Wav(Constant(1001, 44100), 2));
        V three = Constant(-3000, 3 * 44100);
        three[0] = -3, three[1] = 7;
        writeFile(Path("three.wav"), media::Pcm16Wav(three, 2));
    }
};

TEST(AverageSamplesTest, SixteenBitsRoundDownAndEightBitsShift) {
    const auto sowt = vd::media::PcmSoundDescription(vd::media::FourCC("sowt"), 2, 16, 44100);
    V a{1, -1, -3, 32767, -32768, 100}, b{0, 0, 0, 32767, -32768, -101};
    const auto bytes = [](const V& v) {
        const auto* first = reinterpret_cast<const uint8_t*>(v.data());
        return std::vector<uint8_t>(first, first + 2 * v.size());
    };
    std::vector<uint8_t> ab = bytes(a), bb = bytes(b);
    ASSERT_EQ(vd::sound::AverageSamples(ab, bb, sowt), 0);
    EXPECT_EQ(bb, bytes(V{0, -1, -2, 32767, -32768, -1}));  // floor of the half sum

    std::vector<uint8_t> c{255, 0, 128, 1}, d{254, 0, 129, 2};
    ASSERT_EQ(vd::sound::AverageSamples(c, d, vd::media::PcmSoundDescription(vd::media::FourCC("raw "), 1, 8, 44100)), 0);
    EXPECT_EQ(d, (std::vector<uint8_t>{254, 0, 128, 1}));
    EXPECT_EQ(vd::sound::AverageSamples(c, d, vd::media::PcmSoundDescription(vd::media::FourCC("sowt"), 3, 16, 44100)), -4);
    EXPECT_EQ(vd::sound::AverageSamples(c, d, vd::media::PcmSoundDescription(vd::media::FourCC("in24"), 2, 24, 44100)), -4);
}

TEST_F(CombineSoundsTest, MixOfOneAndThreeSecondsAveragesTheFirstAndKeepsTheRest) {
    MakeOneAndThree();
    for (bool shorterFirst : {true, false}) {
        SCOPED_TRACE(shorterFirst);
        vd::media::Movie one = OpenedMovie(Path("one.wav")), three = OpenedMovie(Path("three.wav")), mixed;
        ASSERT_EQ(shorterFirst ? vd::sound::MixSounds(one, three, mixed) : vd::sound::MixSounds(three, one, mixed), 0);
        const V samples = RenderedSamples(std::move(mixed));
        ASSERT_EQ(samples.size(), 2u * 3 * 44100);
        EXPECT_EQ(samples[0], 499);  // (1001 - 3) / 2
        EXPECT_EQ(samples[1], 504);  // (1001 + 7) / 2
        EXPECT_EQ(samples[2 * 44099], -1000);          // floor((1001 - 3000) / 2)
        EXPECT_EQ(samples[2 * 44100], -3000);          // from the second second on: unchanged
        EXPECT_EQ(samples.back(), -3000);
    }
    EXPECT_EQ(SoundStreamOf(Eval(u"Vandrel_MixSounds ( \"one.wav\" ; \"three.wav\" )")).size(), 42u + 3 * 44100);
    EXPECT_EQ(Text(u"Vandrel_GetLastError"), "$0:Vandrel_MixSounds: No error.");
}

TEST_F(CombineSoundsTest, MixOfMonoWithStereoFailsWithParamErr) {
    writeFile(Path("mono.wav"), media::SineWav(1000, 1));
    writeFile(Path("stereo.wav"), media::SineWav(1000, 2));
    EXPECT_EQ(Text(u"Vandrel_MixSounds ( \"mono.wav\" ; \"stereo.wav\" )"), "$-50:Vandrel_MixSounds: Could not mix sounds.");
    EXPECT_EQ(Text(u"Vandrel_MixSounds ( \"stereo.wav\" ; \"nothing.wav\" )"),
              "$-43:Vandrel_MixSounds: Could not get parameter #2 as sound.");
    EXPECT_TRUE(LeftoverTemporaryFiles().empty());
}

TEST_F(CombineSoundsTest, AppendPutsTheSecondSoundAfterTheFirst) {
    MakeOneAndThree();
    vd::media::Movie one = OpenedMovie(Path("one.wav")), three = OpenedMovie(Path("three.wav")), joined;
    ASSERT_EQ(vd::sound::AppendSounds(one, three, joined), 0);
    const V samples = RenderedSamples(std::move(joined));
    ASSERT_EQ(samples.size(), 2u * 4 * 44100);
    EXPECT_EQ(samples[2 * 44099 + 1], 1001);
    EXPECT_EQ(samples[2 * 44100], -3);
    EXPECT_EQ(samples[2 * 44100 + 1], 7);
    EXPECT_EQ(samples.back(), -3000);

    // Different formats follow one another too: a mono 22.05 kHz second after a stereo second.
    writeFile(Path("low.wav"), media::Pcm16Wav(V(22050, 5000), 1, 22050));
    EXPECT_EQ(SoundStreamOf(Eval(u"Vandrel_AppendSound ( \"one.wav\" ; \"low.wav\" )")).size(), 42u + 2 * 44100);
    EXPECT_EQ(Text(u"Vandrel_GetLastError"), "$0:Vandrel_AppendSound: No error.");
    EXPECT_EQ(Text(u"Vandrel_AppendSound ( \"one.wav\" ; \"\" )"),
              "$-50:Vandrel_AppendSound: Could not get parameter #2 as sound.");
    EXPECT_TRUE(LeftoverTemporaryFiles().empty());
}

TEST_F(CombineSoundsTest, ExtractCutsToTheFrameAndRefusesABackwardRange) {
    V ramp(2 * 44100);
    for (size_t i = 0; i < ramp.size(); ++i) ramp[i] = int16_t(i / 2 % 30000);
    writeFile(Path("ramp.wav"), media::Pcm16Wav(ramp, 2));
    vd::media::Movie ramped = OpenedMovie(Path("ramp.wav")), part;
    ASSERT_EQ(vd::sound::ExtractPart(ramped, 0x4000, 0xC000, part), 0);  // 0.25 s to 0.75 s
    const V samples = RenderedSamples(std::move(part));
    ASSERT_EQ(samples.size(), 2u * 22050);
    EXPECT_EQ(samples.front(), 11025);
    EXPECT_EQ(samples.back(), (11025 + 22049) % 30000);
    ASSERT_EQ(vd::sound::ExtractPart(ramped, 0x8000, 0x50000, part), 0);  // the end is cut to the sound's
    EXPECT_EQ(RenderedSamples(std::move(part)).size(), 2u * 22050);

    EXPECT_EQ(SoundStreamOf(Eval(u"Vandrel_ExtractSound ( \"ramp.wav\" ; 0.25 ; \"0:00.75\" )")).size(), 42u + 22050);
    EXPECT_EQ(Text(u"Vandrel_ExtractSound ( \"ramp.wav\" ; 0.75 ; 0.25 )"),
              "$-2015:Vandrel_ExtractSound: Could not extract sound.");
    EXPECT_EQ(SoundStreamOf(Eval(u"Vandrel_ExtractSound ( \"ramp.wav\" ; 5 ; 6 )")).size(), 42u);  // nothing
    EXPECT_EQ(Text(u"Vandrel_ExtractSound ( \"ramp.wav\" ; \"soon\" ; 1 )"),
              "$-50:Vandrel_ExtractSound: Could not get parameter #2 as time.");
    EXPECT_EQ(Text(u"Vandrel_ExtractSound ( \"ramp.wav\" ; 0 ; -1 )"),
              "$-50:Vandrel_ExtractSound: Could not get parameter #3 as time.");
    EXPECT_TRUE(LeftoverTemporaryFiles().empty());
}

TEST_F(CombineSoundsTest, CountsAreCheckedBeforeAnything) {
    const auto text = [](const char* s) { return vdhost::makeTextUtf8(s); };
    EXPECT_EQ(CallDirectly(4, {text("a")}), "$-50:Vandrel_AppendSound: This function requires exactly 2 parameters.");
    EXPECT_EQ(CallDirectly(5, {text("a"), text("b")}), "$-50:Vandrel_ExtractSound: This function expects 3 parameters.");
    EXPECT_EQ(CallDirectly(12, {text("a")}), "$-50:Vandrel_FadeSound: This function expects 5 parameters.");
}

}  // namespace
}  // namespace vdtest
