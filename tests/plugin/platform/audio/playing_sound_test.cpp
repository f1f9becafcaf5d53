// Sounds played on the virtual output, captured and compared with the mix worked out from their
// samples and the log of what took effect when.
#include "platform/audio/playing_sound.h"
#include "platform/media/selection.h"

#include "audio_fixtures.h"

#include <cstdlib>

namespace vd::audio {
namespace {

using namespace vdtest::audio;
using Samples = std::vector<int16_t>;

class PlayingSoundTest : public ::testing::Test {
protected:
    void UseOutput(const std::string& setting) { setenv("VANDREL_AUDIO", setting.c_str(), 1); }
    void Capturing(const std::string& speed = "fast") { UseOutput("virtual:out=" + capturePath() + ",speed=" + speed); }
    std::string capturePath() const { return (folder.path() / "capture.wav").string(); }

    media::Movie MovieOf(const Samples& samples) {
        const auto path = folder.path() / ("sound" + std::to_string(++made) + ".wav");
        vdtest::writeFile(path, vdtest::media::Pcm16Wav(samples, 2));
        media::Movie movie;
        EXPECT_EQ(media::MovieFromFile(path.string(), movie), util::kNoError);
        return movie;
    }
    std::unique_ptr<PlayingSound> Play(media::Movie&& movie) {
        std::unique_ptr<PlayingSound> sound;
        EXPECT_EQ(PlayingSound::Make(std::move(movie), sound), util::kNoError) << media::LastMediaErrorDetail();
        return sound;
    }
    static void WaitDone(const PlayingSound& sound) {
        ASSERT_TRUE(vdtest::Within(std::chrono::seconds(20), [&] { return sound.IsDone(); }));
    }

    // The capture once the output has stopped (its last block is then written).
    Capture Finished() {
        ShutDownOutput();
        return ReadCapture(capturePath());
    }

    void TearDown() override {
        ShutDownOutput();
        setenv("VANDREL_AUDIO", "virtual", 1);
    }

    vdtest::TempFolder folder;
    int made = 0;
};

TEST_F(PlayingSoundTest, SoundsAtOnceAreSummedWithTheirVolumeAndBalance) {
    Capturing();
    const Samples a = Tone(30000, 440), b = Tone(20000, 660, 9000);
    auto first = Play(MovieOf(a));
    auto second = Play(MovieOf(b));
    EXPECT_EQ(first->Volume(), 256);
    EXPECT_EQ(first->Balance(), 0.0f);
    EXPECT_EQ(first->Rate(), 0);
    first->SetVolume(-200);  // inverted
    first->SetBalance(0.5f);
    second->SetVolume(300);
    second->SetBalance(-1.5f);  // beyond full left: the left keeps unity, the right goes negative
    first->Start();
    second->Start();
    EXPECT_EQ(first->Rate(), kFixedOne);
    EXPECT_FALSE(first->IsDone());
    WaitDone(*second);
    second->SetBalance(1);  // a done sound stays silent whatever it is told
    first->SetBalance(-1);
    WaitDone(*first);
    first.reset();
    second.reset();

    const Capture capture = Finished();
    EXPECT_EQ(capture.FrameOf("start", 1), 0);
    EXPECT_EQ(capture.FrameOf("start", 2), 0);
    EXPECT_EQ(capture.FrameOf("done", 2), 20000);
    EXPECT_EQ(capture.Frames() - capture.FrameOf("done", 1), 30000 % 512 ? 512 - 30000 % 512 : 0)
        << "nothing is written once every sound is done but the rest of the last block";
    ExpectSameMix(capture.samples, ExpectedMix({a, b}, capture));
}

TEST_F(PlayingSoundTest, RatePauseAndRewindMoveThroughTheSamples) {
    Capturing();
    const int64_t frames = 30 * 44100;
    const Samples a = Tone(frames, 500);
    auto sound = Play(MovieOf(a));
    const auto capturedPast = [&](int64_t n) {
        return vdtest::Within(std::chrono::seconds(20), [&] { return CapturedFrames(capturePath()) > n; });
    };
    sound->SetPreferredRate(2 * kFixedOne);
    sound->Start();
    EXPECT_EQ(sound->Rate(), 2 * kFixedOne);
    ASSERT_TRUE(capturedPast(10000));
    sound->Stop();
    EXPECT_EQ(sound->Rate(), 0);
    ASSERT_TRUE(LogHas(capturePath(), " stop 1"));
    EXPECT_FALSE(sound->IsDone()) << "a paused sound is not done";
    sound->SetRate(-5);
    EXPECT_EQ(sound->Rate(), 0) << "a negative rate counts as 0";
    const int64_t paused = CapturedFrames(capturePath());
    sound->SetRate(kFixedOne / 2);  // sets the stopped sound going at half speed
    ASSERT_TRUE(capturedPast(paused + 10000));
    sound->SetRate(kFixedOne);
    WaitDone(*sound);
    ASSERT_TRUE(LogHas(capturePath(), " done 1"));

    const Capture capture = ReadCapture(capturePath());
    ExpectSameMix(capture.samples, ExpectedMix({a}, capture));
    EXPECT_NE(capture.FrameOf("rate", 1), -1);

    // Back at the beginning it is no longer done and plays the whole sound again.
    sound->GoToBeginning();
    EXPECT_FALSE(sound->IsDone());
    const int64_t before = capture.Frames();
    EXPECT_EQ(sound->PreferredRate(), 2 * kFixedOne);
    sound->SetPreferredRate(kFixedOne);
    sound->Start();
    WaitDone(*sound);
    sound.reset();
    const Capture again = Finished();
    ASSERT_GE(again.Frames(), before + frames);
    for (int64_t i = 0; i < 2 * frames; ++i)
        ASSERT_NEAR(again.samples[size_t(2 * before + i)], a[size_t(i)] / 32768.0, 1e-6) << i;
}

TEST_F(PlayingSoundTest, ASelectionPlaysOnlyItsFrames) {
    Capturing();
    const Samples a = Tone(44100, 300);
    media::Movie whole = MovieOf(a), part;
    ASSERT_EQ(media::CopyMovieSelection(whole, {11025, 22050, 44100}, part), util::kNoError);
    auto sound = Play(std::move(part));
    sound->Start();
    WaitDone(*sound);
    sound.reset();
    const Capture capture = Finished();
    ASSERT_EQ(capture.FrameOf("done", 1), 22050);
    ExpectSameMix(capture.samples, ExpectedMix({Samples(a.begin() + 22050, a.begin() + 66150)}, capture));
}

TEST_F(PlayingSoundTest, ADestroyedSoundLeavesAtOnce) {
    Capturing();
    const Samples a = Tone(441000, 200), b = Tone(441000, 350);
    auto first = Play(MovieOf(a));
    auto second = Play(MovieOf(b));
    first->Start();
    second->Start();
    // Both are heard before they go: a sound destroyed before the device's first block with it
    // never started, and has no stop to log (a busy machine may take longer than a block for that).
    ASSERT_TRUE(LogHas(capturePath(), " start 2"));
    first.reset();
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
    second.reset();
    ASSERT_TRUE(LogHas(capturePath(), " stop 2"));
    const Capture capture = Finished();
    ASSERT_LT(capture.Frames(), 441000) << "the sounds were stopped before their end";
    EXPECT_LE(capture.FrameOf("stop", 1), capture.FrameOf("stop", 2));
    EXPECT_EQ(capture.FrameOf("stop", 2), capture.Frames()) << "nothing written once no sound plays";
    ExpectSameMix(capture.samples, ExpectedMix({a, b}, capture));
}

TEST_F(PlayingSoundTest, AnOutputThatCannotBeHadIsReported) {
    const std::pair<std::string, std::string> cases[] = {{"speakers", "\"speakers\""},
                                                         {"virtual:speed=slow", "speed=slow"},
                                                         {"virtual:out=/nonexistent/c.wav", "/nonexistent/c.wav"}};
    for (const auto& [setting, named] : cases) {
        UseOutput(setting);
        std::unique_ptr<PlayingSound> sound;
        EXPECT_EQ(PlayingSound::Make(MovieOf(Tone(100, 440)), sound), util::kNoSoundOutput) << setting;
        EXPECT_NE(media::LastMediaErrorDetail().find(named), std::string::npos) << media::LastMediaErrorDetail();
        EXPECT_EQ(sound, nullptr);
    }
}

}  // namespace
}  // namespace vd::audio
