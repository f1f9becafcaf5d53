// Vandrel_CreateSound from end to end: the stored "snd " stream, the generated movie's frames, and
// every failure of its table with its exact status text.
#include "sound/synthesis/create_sound.h"
#include "sound_test_support.h"

namespace vdtest {
namespace {

using CreateSoundTest = SoundSessionTest;

vd::sound::SoundOutcome Create(std::vector<std::string> arguments, vd::media::Movie& movie) {
    return vd::sound::CreateSound(arguments, movie);
}

TEST_F(CreateSoundTest, SineAndSquareAreStoredAsEightBitMonoSoundResources) {
    Eval(u"Vandrel_CreateSound ( \"sine\" ; 0.01 )");  // the media libraries are loaded by now
    const int descriptors = media::OpenDescriptors();
    FMX_Data result = Eval(u"Vandrel_CreateSound ( \"sine\" )");
    ASSERT_TRUE(vdhost::isContainer(result));
    ASSERT_EQ(result.binary.streams.size(), 1u);
    const std::string snd = SoundStreamOf(result);
    // The header's layout is pinned by the sound resource tests; here its counts.
    ASSERT_EQ(snd.size(), 42u + 44100);
    EXPECT_EQ(Be32(snd, 24), 44100u);        // sample bytes
    EXPECT_EQ(Be32(snd, 28), 0xAC440000u);   // rate
    EXPECT_EQ(uint8_t(snd[42]), 128);        // sin 0: the centre
    // A quarter period in (100.2 frames a period): near the top.
    EXPECT_GE(uint8_t(snd[42 + 25]), 250);
    EXPECT_EQ(Text(u"Vandrel_GetLastError"), "$0:Vandrel_CreateSound: No error.");
    EXPECT_TRUE(LeftoverTemporaryFiles().empty());
    EXPECT_EQ(media::OpenDescriptors(), descriptors);
    // A half-second square holds its edges in the movie and in the stream.
    vd::media::Movie movie;
    ASSERT_EQ(Create({"square", "0.5", "A4"}, movie).code, 0);
    const auto& media = movie.FirstSoundTrack()->media;
    ASSERT_EQ(media.Duration(), 22050);
    std::vector<int16_t> frames;
    ASSERT_EQ(vd::media::ReadFramesInt16(media, 0, 102, frames), 0);
    for (int n = 0; n <= 101; ++n) {
        const int16_t expected = (n >= 51 && n <= 100) ? 32767 : -32768;
        ASSERT_EQ(frames[size_t(2 * n)], expected) << n;
        ASSERT_EQ(frames[size_t(2 * n + 1)], expected) << n;
    }

    const std::string square = SoundStreamOf(Eval(u"Vandrel_CreateSound ( \"square\" ; 0.5 ; \"A4\" )"));
    ASSERT_EQ(square.size(), 42u + 22050);
    EXPECT_EQ(uint8_t(square[42 + 50]), 0);
    EXPECT_EQ(uint8_t(square[42 + 51]), 255);
}

// Pitch names are pinned by the synthesis tests; here every form of the arguments is accepted
// and the duration gives the frames.
TEST_F(CreateSoundTest, DurationsAreReadAsTheyAlwaysWereWithEveryFormOfPitch) {
    struct Case { std::vector<std::string> arguments; int64_t frames; } cases[] = {
        {{"sine", "2s"}, 88200},
        {{"sine", "1.5", "440Hz"}, 66150},
        {{"saw", " 0.25", "H4"}, 11025},
        {{"noise", "0.1", "c#4"}, 4409},
    };
    for (const Case& c : cases) {
        vd::media::Movie movie;
        auto outcome = Create(c.arguments, movie);
        ASSERT_EQ(outcome.code, 0) << c.arguments[0] << " " << outcome.message;
        EXPECT_EQ(movie.FirstSoundTrack()->media.Duration(), c.frames) << c.arguments[1];
    }
    // Noise fills both channels with their own values.
    vd::media::Movie noise;
    ASSERT_EQ(Create({"noise", "0.01"}, noise).code, 0);
    std::vector<int16_t> frames;
    ASSERT_EQ(vd::media::ReadFramesInt16(noise.FirstSoundTrack()->media, 0, 100, frames), 0);
    int differing = 0;
    for (size_t i = 0; i < 100; ++i) differing += frames[2 * i] != frames[2 * i + 1];
    EXPECT_GT(differing, 90);
}

TEST_F(CreateSoundTest, EveryFailureHasItsCodeAndMessage) {
    struct Case { const char16_t* calculation; const char* status; } cases[] = {
        {u"Vandrel_CreateSound ( \"sines\" )", "$-50:Vandrel_CreateSound: Wrong parameter(s)."},
        {u"Vandrel_CreateSound ( \"sine\" ; \"abc\" )",
         "$-50:Vandrel_CreateSound: Error converting parameter #2 to duration."},
        {u"Vandrel_CreateSound ( \"sine\" ; 1 ; \"C9\" )",
         "$-50:Vandrel_CreateSound: Error converting parameter #3 to frequency."},
        {u"Vandrel_CreateSound ( \"sine\" ; 40000 )", "$-108:Vandrel_CreateSound: Error generating waveform."},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(vdhost::utf8Of(vdhost::makeText(c.calculation)));
        FMX_Data result = Eval(c.calculation);
        EXPECT_FALSE(vdhost::isContainer(result));
        EXPECT_EQ(vdhost::utf8Of(result), c.status);
        EXPECT_EQ(Text(u"Vandrel_GetLastError"), c.status);
    }
    // The host refuses a call without arguments; the function's own check stands behind it.
    vd::media::Movie movie;
    const auto none = Create({}, movie);
    EXPECT_EQ(std::to_string(none.code) + " " + none.message, "-50 This function requires 1 or more parameters.");
    EXPECT_EQ(movie.TrackCount(), 0u);
    EXPECT_TRUE(LeftoverTemporaryFiles().empty());
}

}  // namespace
}  // namespace vdtest
