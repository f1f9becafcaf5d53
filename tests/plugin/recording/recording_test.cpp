// Recording through the plug-in from the virtual input (a 440 Hz tone at a quarter of full scale,
// in real time), read back with ffmpeg: the recorder's states as the functions show them, the
// files they leave, and the timer that keeps a background recording going.
#include "plugin/container/container_test_support.h"
#include "plugin/sound/sound_test_support.h"

#include "playback/media_pool.h"
#include "playback/recorder_link.h"
#include "playback/timer_clients.h"
#include "recording/recorder.h"
#include "support/process.h"

#include <chrono>
#include <cmath>
#include <cstring>
#include <thread>

#include <unistd.h>

namespace vdtest {
namespace {

using Clock = std::chrono::steady_clock;
using vd::recording::Recorder;

constexpr int16_t kStart = 17, kStop = 18, kPause = 19, kDialog = 20, kGet = 21, kLastError = 13;

std::string LastError() { return Call(kLastError, {}).text; }

class RecorderShutDown : public ::testing::Environment {
    void TearDown() override {
        Recorder::Destroy();
        vd::playback::MediaPool::Destroy();
    }
};
const auto* const kShutDown = ::testing::AddGlobalTestEnvironment(new RecorderShutDown);

// The file's sound as 16-bit stereo frames, decoded by ffmpeg rather than by our own reader.
std::vector<int16_t> Decoded(const std::string& path) {
    const ProcessResult r = runProcess({programOnPath("ffmpeg"), "-v", "error", "-i", path, "-f", "s16le", "-ac",
                                        "2", "-ar", "44100", "-"});
    EXPECT_EQ(r.status, 0) << r.err;
    std::vector<int16_t> samples(r.out.size() / 2);
    std::memcpy(samples.data(), r.out.data(), samples.size() * 2);
    return samples;
}

// The first frame from `from` on that is not the virtual tone shifted by `shift`, sample for sample.
size_t ToneFrames(const std::vector<int16_t>& s, size_t from = 0, int64_t shift = 0) {
    for (size_t i = from; i < s.size() / 2; ++i) {
        const double t = double(int64_t(i) + shift) / 44100;
        const auto tone = int16_t(std::nearbyint(32768.0 * float(0.25 * std::sin(2 * M_PI * 440 * t))));
        if (std::abs(s[2 * i] - tone) > 1 || std::abs(s[2 * i + 1] - tone) > 1) return i;
    }
    return s.size() / 2;
}

class RecordingTest : public SoundSessionTest {
protected:
    RecordingTest() : audio_("VANDREL_AUDIO", "virtual:in=tone"), script_("VANDREL_UI_SCRIPT", Path("answers.txt")) {}
    ~RecordingTest() override {
        Call(kStop, {});
        Recorder::Destroy();
    }
    void UseInput(const std::string& options) { setenv("VANDREL_AUDIO", ("virtual:" + options).c_str(), 1); }
    std::filesystem::path TemporaryFolder() const {
        return std::filesystem::canonical(root_.path() / "tmp" / ("vandrel-" + std::to_string(getuid())));
    }
    static bool TimerRunning() { return (vd::playback::gTimerClients & vd::playback::kTimerInstalled) != 0; }

    ScopedEnv audio_;
    ScopedEnv script_;
};

TEST_F(RecordingTest, ABackgroundRecordingKeepsItsTimeAndLeavesPausesOut) {
    const std::string target = Write("take.mov", "old contents that recording replaces");
    const auto started = Clock::now();
    EXPECT_EQ(Call(kStart, {T(target), T("yes")}).text, "");
    EXPECT_EQ(LastError(), "$0:Vandrel_RecordSoundStart: No error.");
    EXPECT_EQ(Call(kGet, {T("recording")}).text, "1");
    EXPECT_EQ(Call(kStart, {T("")}).text, "") << "one recording at a time";
    EXPECT_EQ(LastError(), "$-227:Vandrel_RecordSoundStart: Only one recording is allowed. Call "
                           "Vandrel_RecordSoundStop before calling this function again.");

    std::this_thread::sleep_until(started + std::chrono::milliseconds(1000));
    const auto pausedAt = Clock::now();
    EXPECT_EQ(Call(kPause, {}).text, "$0:Vandrel_RecordSoundPause: No error.");
    EXPECT_EQ(Call(kGet, {T("recording")}).text, "0");
    // A paused recording lets the timer go; resuming takes it again.
    std::this_thread::sleep_for(std::chrono::milliseconds(600));
    EXPECT_FALSE(TimerRunning());
    const auto resumedAt = Clock::now();
    Call(kPause, {});
    EXPECT_TRUE(TimerRunning());
    std::this_thread::sleep_until(started + std::chrono::milliseconds(2600));

    const auto stoppedAt = Clock::now();
    const CallAnswer stopped = Call(kStop, {});
    EXPECT_EQ(stopped.text, "size:0,0\rmoviemac:take.mov\rmoviemac:" + target);
    const std::vector<int16_t> samples = Decoded(target);
    const double seconds = double(samples.size() / 2) / 44100;
    // About 2.6 s less the 0.6 s paused, as this run's clock had them (a busy machine stretches them).
    const auto span = [](auto from, auto to) { return std::chrono::duration<double>(to - from).count(); };
    EXPECT_NEAR(seconds, span(started, stoppedAt) - span(pausedAt, resumedAt), 0.25);
    const size_t tone = ToneFrames(samples);
    EXPECT_NEAR(double(tone) / 44100, span(started, pausedAt), 0.25) << "the tone runs unbroken up to the pause";
    EXPECT_LT(tone, samples.size() / 2) << "the paused span is left out, so the tone jumps";
    // After the pause the tone goes on from where the input was when it resumed (a shift the tone's
    // 2205-frame cycle hides; the pause's length shows in the count instead).
    int64_t shift = 1;
    while (shift < 2205 && ToneFrames(samples, tone, shift) != samples.size() / 2) ++shift;
    EXPECT_LT(shift, 2205) << "frames after the pause are not the tone";
    EXPECT_TRUE(Within(std::chrono::milliseconds(300), [] { return !TimerRunning(); }));
}

TEST_F(RecordingTest, AStartWhilePausedPassesTheCheckButFindsTheInputTaken) {
    EXPECT_EQ(Call(kStart, {T(""), N(1)}).code, 0);
    Call(kPause, {});
    const std::string second = Path("second.mov");
    Call(kStart, {T(second), N(1)});
    EXPECT_EQ(LastError(), "$-1:Vandrel_RecordSoundStart: Could not start asynchronous recording.");
    EXPECT_FALSE(std::filesystem::exists(second)) << "the file made for it goes again";
    EXPECT_EQ(Recorder::Instance()->Entries().size(), 1u) << "no half-made recording stays registered";

    Call(kPause, {});
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    const std::string text = Call(kStop, {}).text;
    const std::string path = text.substr(text.rfind("moviemac:") + 9);
    EXPECT_EQ(std::filesystem::path(path).parent_path(), TemporaryFolder());
    EXPECT_GT(Decoded(path).size(), 0u) << "the reference's temporary file stays for the caller";

    // Nothing left to stop or pause.
    const CallAnswer again = Call(kStop, {});
    EXPECT_EQ(again.text, "");
    EXPECT_EQ(LastError(), "$-3155:Vandrel_RecordSoundStop: There is no recording to stop. Call "
                           "Vandrel_RecordSoundStart before calling this function.");
    EXPECT_EQ(Call(kPause, {}).text, "$-3155:Vandrel_RecordSoundPause: You are currently not recording. Use "
                                     "Vandrel_RecordSoundStart before using this function.");
}

TEST_F(RecordingTest, AnUnstoppedTemporaryRecordingGoesAtShutDown) {
    EXPECT_EQ(Call(kStart, {N(0), N(1)}).code, 0);
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
    EXPECT_FALSE(std::filesystem::is_empty(TemporaryFolder()));
    Recorder::Destroy();
    vd::playback::MediaPool::Destroy();
    EXPECT_TRUE(std::filesystem::is_empty(TemporaryFolder()));
    EXPECT_EQ(vd::playback::Recorder().state.load()(), 0);
    EXPECT_EQ(vd::playback::gTimerClients.load(), 0) << "the recorder's timer is gone";
}

TEST_F(RecordingTest, RefusalsComeBeforeAnythingIsRecorded) {
    const std::string kept = Write("kept.mov", "keep me");
    struct Case {
        std::vector<FMX_Data> args;
        int code;
        const char* message;
    } cases[] = {
        {{T(kept), N(1), T("<hex>00</hex>")}, -4, "Hex settings are currently unimplemented."},
        {{T(Data().string())}, -1302, "Recording target must be a file, not directory."},
        {{T(kept + "/inside.mov")}, -120, "Parent folder must be a directory."},
        {{ContainerOf({{"snd ", "x"}})}, -50, "QuickTime reference is not a meaningful destination for recording."},
        {{vdhost::makeBoolean(true)}, -50, "Unknown parameter type. Should be Text, Container or Number."},
    };
    for (auto& c : cases) {
        EXPECT_EQ(Call(kStart, c.args).text, "");
        EXPECT_EQ(LastError(), "$" + std::to_string(c.code) + ":Vandrel_RecordSoundStart: " + c.message);
    }
    EXPECT_EQ(readFile(kept), "keep me");
    // Any number but 0 records nothing, and says so with no error.
    EXPECT_EQ(Call(kStart, {N(7)}).code, 0);
    EXPECT_EQ(Recorder::Instance()->Entries().size(), 0u);
    EXPECT_FALSE(std::filesystem::exists(Path("inside.mov")));
}

TEST_F(RecordingTest, ASynchronousRecordingEndsWithTheInputAndAnswersTheSoundOrAReference) {
    UseInput("in=tone,length=0.5");
    const CallAnswer sound = Call(kStart, {T("")});
    ASSERT_EQ(sound.code, 0) << LastError();
    const std::string stream = SoundStreamOf(sound.value);
    EXPECT_NEAR(double(stream.size()), 0.5 * 44100, 0.05 * 44100) << "8-bit mono at 44.1 kHz";
    EXPECT_TRUE(std::filesystem::is_empty(TemporaryFolder())) << "the temporary recording is gone";

    UseInput("in=tone,length=0.5");
    EXPECT_EQ(Call(kStart, {T(Path("made.mov"))}).text, "size:0,0\rmoviemac:made.mov\rmoviemac:" + Path("made.mov"));
    EXPECT_NEAR(double(Decoded(Path("made.mov")).size() / 2), 0.5 * 44100, 1);

    // The input cannot be had: the file made for it goes again.
    setenv("VANDREL_AUDIO", "virtual", 1);
    EXPECT_EQ(Call(kStart, {T(Path("never.mov"))}).text, "");
    EXPECT_EQ(LastError().rfind("$-200:Vandrel_RecordSoundStart: Synchronous recording failed.", 0), 0u);
    EXPECT_FALSE(std::filesystem::exists(Path("never.mov")));
}

TEST_F(RecordingTest, TheFormatDialogSetsWhatTheNextRecordingUses) {
    writeFile(Path("answers.txt"), "ok rate=22050 channels=mono size=8\n");
    const std::string settings = Call(kDialog, {}).text;
    EXPECT_EQ(settings.rfind("<hex>", 0), 0u) << settings;
    UseInput("in=tone,length=0.3");
    Call(kStart, {T(Path("small.mov"))});
    const ProcessResult probe = runProcess({programOnPath("ffprobe"), "-v", "error", "-show_entries",
                                            "stream=sample_rate,channels,codec_name", "-of", "default=nw=1",
                                            Path("small.mov")});
    EXPECT_EQ(probe.out, "codec_name=pcm_s8\nsample_rate=22050\nchannels=1\n");

    writeFile(Path("answers.txt"), "cancel\n");
    EXPECT_EQ(Call(kDialog, {}).text, "$-128:Vandrel_RecordSoundFormatDialog: Operation canceled by the user.");
}

}  // namespace
}  // namespace vdtest
