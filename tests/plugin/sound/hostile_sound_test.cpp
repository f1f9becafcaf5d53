// Sounds whose headers claim what their bytes cannot back: a rate of 1 Hz that would turn a few
// kilobytes into hours of converted sound is refused before anything is written, quickly, with
// -108 and a message that says why, and without a temporary file left behind. Damaged headers and
// impossible paths answer the codes that say what is wrong with them.
#include "plugin/sound/sound_test_support.h"

namespace vdtest {
namespace {

using HostileSoundTest = SoundSessionTest;

TEST_F(HostileSoundTest, ASoundThatWouldConvertToMoreThanTheCapIsRefusedAtOnce) {
    // 44100 frames at 1 Hz: 176 KB that claim 12 hours, 7.8 GB once at 44100 Hz.
    Write("slow.wav", media::SineWav(44100, 2, 1));
    Write("slow24.wav", media::SineWav(44100, 2, 1, 24));  // 24 bits: DrawWaveform converts it first
    struct Case {
        const char16_t* call;
        const char* status;  // Vandrel_GetLastError's answer afterwards
    } cases[] = {
        {u"Vandrel_Normalize ( \"slow.wav\" )", "$-108:Vandrel_Normalize: The sound is too large."},
        {u"Vandrel_MixSounds ( \"slow.wav\" ; \"slow.wav\" )", "$-108:Vandrel_MixSounds: The sound is too large."},
        {u"Vandrel_DrawWaveform ( \"slow24.wav\" ; 1 ; 100 ; 100 ; \"\" ; \"\" )",
         "$-108:Vandrel_DrawWaveform: The sound is too large."},
    };
    for (const auto& c : cases) {
        Eval(c.call);
        EXPECT_EQ(Text(u"Vandrel_GetLastError"), c.status);
        EXPECT_TRUE(LeftoverTemporaryFiles().empty()) << c.status;
    }
    // A sound of an ordinary rate is not affected.
    Write("tone.wav", media::SineWav(4410, 2));
    EXPECT_EQ(SoundStreamOf(Eval(u"Vandrel_Normalize ( \"tone.wav\" )")).size(), 42u + 4410);
}

TEST_F(HostileSoundTest, ImpossibleHeadersAndPathsAnswerWhatIsWrong) {
    VD_REQUIRE_FFMPEG();
    const std::string wav = Write("source.wav", media::SineWav(4410, 2));
    media::Ffmpeg({"-i", wav, Path("tone.aiff")});
    std::string aiff = readFile(Path("tone.aiff"));
    const size_t comm = aiff.find("COMM");
    ASSERT_NE(comm, std::string::npos);
    aiff.replace(comm + 10, 4, "\xFF\xFF\xFF\xFF");  // numSampleFrames
    Write("claims.aiff", aiff);
    const auto info = [&](const std::string& path) {
        return Text(u"Vandrel_GetSoundInfo ( $a )", {vdhost::makeTextUtf8(path)});
    };
    EXPECT_EQ(info(Path("claims.aiff")), "$-2048:Vandrel_GetSoundInfo: Could not get parameter #1 as sound.");
    // A name longer than a Linux name may be, and a path longer than Linux allows: bad names, not
    // files that could be found elsewhere.
    EXPECT_EQ(info(Path(std::string(300, 'n') + ".wav")), "$-37:Vandrel_GetSoundInfo: Could not get parameter #1 as sound.");
    std::string deep = Data().string();
    while (deep.size() <= 4100) deep += "/folder";
    EXPECT_EQ(info(deep + "/tone.wav"), "$-37:Vandrel_GetSoundInfo: Could not get parameter #1 as sound.");
    EXPECT_EQ(Text(u"Vandrel_Amplify ( $a ; 2 )", {vdhost::makeTextUtf8(deep + "/tone.wav")}),
              "$-37:Vandrel_Amplify: Could not get parameter #1 as sound.");
}

}  // namespace
}  // namespace vdtest
