// Playing sounds through the plug-in on the virtual device (in real time, so that the pool's
// timing can be watched), the pool's quirks, and the status texts of the playback and settings
// functions.
#include "plugin/sound/sound_test_support.h"

#include "playback/media_pool.h"
#include "playback/timer_clients.h"

#include <chrono>
#include <thread>

#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

namespace vdtest {
namespace {

using Clock = std::chrono::steady_clock;
using vd::playback::MediaPool;

constexpr int16_t kPlaySound = 2, kStopSound = 14, kGet = 21, kSet = 23, kPlayPause = 25;

// This program's own pool and output go when the tests are over, as at the plug-in's shut-down.
class PlaybackShutDown : public ::testing::Environment {
    void TearDown() override {
        MediaPool::Destroy();
        vd::audio::ShutDownOutput();
    }
};
const auto* const kShutDown = ::testing::AddGlobalTestEnvironment(new PlaybackShutDown);

bool TimerInstalled() { return (vd::playback::gTimerClients & vd::playback::kTimerInstalled) != 0; }

class PlaybackTest : public SoundSessionTest {
protected:
    PlaybackTest() : audio_("VANDREL_AUDIO", "virtual") {}
    ~PlaybackTest() override {
        Call(kStopSound, {});
        Call(kSet, {T("volume"), N(1)});
        Call(kSet, {T("tempo"), N(1)});
        Call(kSet, {T("balance"), N(0)});
    }
    std::string Tone(const char* name, double seconds) {
        return Write(name, media::SineWav(int64_t(seconds * 44100), 2));
    }
    ScopedEnv audio_;
};

TEST_F(PlaybackTest, AnAsynchronousSoundGoesAtTheTickAfterItsEndAndTakesTheTimerWithIt) {
    const std::string tone = Tone("short.wav", 0.3);
    const auto start = Clock::now();
    EXPECT_EQ(Call(kPlaySound, {T(tone), N(1)}).text, "$0:Vandrel_PlaySound: No error.");
    MediaPool& pool = *MediaPool::Instance();
    EXPECT_EQ(pool.EntryCount(), 1u);
    EXPECT_TRUE(TimerInstalled());
    ASSERT_TRUE(Within(std::chrono::milliseconds(1500), [&] { return pool.EntryCount() == 0; }));
    const double gone = std::chrono::duration<double>(Clock::now() - start).count();
    EXPECT_GT(gone, 0.28);
    EXPECT_LT(gone, 0.3 + 0.1 + 0.1) << "disposed within a tick of its end (and some slack for a busy machine)";
    EXPECT_TRUE(Within(std::chrono::milliseconds(250), [] { return !TimerInstalled(); }));
}

TEST_F(PlaybackTest, PauseTempoAndStopWorkOnEverySound) {
    const std::string tone = Tone("long.wav", 5);
    Call(kPlaySound, {T(tone), N(1)});
    Call(kPlaySound, {T(tone), N(1)});
    MediaPool& pool = *MediaPool::Instance();
    const std::vector<uint32_t> ids = pool.EntryIds();
    ASSERT_EQ(ids.size(), 2u);
    EXPECT_EQ(Call(kGet, {T("PlayStatus")}).text, "1");

    // Pausing one and toggling all inverts each by its own state.
    EXPECT_EQ(Call(kPlayPause, {N(double(int32_t(ids[0])))}).text, "$0:Vandrel_PlayPause: No error.");
    EXPECT_FALSE(pool.IsPlaying(ids[0]));
    Call(kPlayPause, {});
    EXPECT_TRUE(pool.IsPlaying(ids[0]));
    EXPECT_FALSE(pool.IsPlaying(ids[1]));
    EXPECT_FLOAT_EQ(pool.GetRate(ids[1]), 1.0f) << "a paused sound tells its tempo, not 0";

    // A tempo set for all resumes the paused one; new sounds start with it.
    Call(kSet, {T("tempo"), N(2)});
    EXPECT_TRUE(pool.IsPlaying(ids[1]));
    EXPECT_EQ(Call(kGet, {T("tempo")}).text, "2");
    EXPECT_FLOAT_EQ(pool.GetRate(ids[1]), 2.0f);

    EXPECT_EQ(Call(kStopSound, {T("ignored")}).text, "$0:Vandrel_StopSound: No error.");
    EXPECT_EQ(pool.EntryCount(), 0u);
    EXPECT_EQ(Call(kGet, {T("playstatus")}).text, "0");
    EXPECT_TRUE(Within(std::chrono::milliseconds(250), [] { return !TimerInstalled(); }));
}

TEST_F(PlaybackTest, DefaultsKeepTheirUnclampedAndSaturatedForms) {
    const std::string tone = Tone("long.wav", 5);
    MediaPool& pool = *MediaPool::Instance();
    Call(kSet, {T("volume"), N(200)});
    EXPECT_EQ(Call(kGet, {T("volume")}).text, "200");
    Call(kPlaySound, {T(tone), N(1)});
    ASSERT_EQ(pool.EntryIds().size(), 1u);
    const uint32_t id = pool.EntryIds()[0];
    EXPECT_FLOAT_EQ(pool.GetVolume(id), -14336.0f / 256.0f) << "200 x 256 kept in 16 bits by a new sound";
    pool.SetVolume(0, 200);
    EXPECT_FLOAT_EQ(pool.GetVolume(id), 127.0f) << "clamped when set on a playing sound";
    Call(kSet, {T("tempo"), N(40000)});
    EXPECT_FLOAT_EQ(pool.GetRate(id), float(0x7FFFFFFF) / 65536.0f);
    Call(kSet, {T("balance"), N(-0.257)});
    EXPECT_EQ(Call(kGet, {T("balance")}).text, "-0.26") << "cut down to hundredths";
    EXPECT_FLOAT_EQ(pool.GetVolume(12345), 0.0f) << "an id that matches nothing";
}

TEST_F(PlaybackTest, ASynchronousPlayHoldsTheCallUntilTheEnd) {
    const std::string tone = Tone("short.wav", 0.4);
    const auto start = Clock::now();
    EXPECT_EQ(Text(u"Vandrel_PlaySound ( $a )", {T(tone)}), "$0:Vandrel_PlaySound: No error.");
    const double took = std::chrono::duration<double>(Clock::now() - start).count();
    EXPECT_GT(took, 0.38);
    EXPECT_LT(took, 1.0);
    // Start 5 and end 2 play the part between them, here 0.1 s of it.
    const auto part = Clock::now();
    EXPECT_EQ(Text(u"Vandrel_PlaySound ( $a ; 0 ; 0.3 ; 0.2 )", {T(tone)}), "$0:Vandrel_PlaySound: No error.");
    EXPECT_LT(std::chrono::duration<double>(Clock::now() - part).count(), 0.35);
    Text(u"Vandrel_Set ( \"tempo\" ; 0 )");
    EXPECT_EQ(Text(u"Vandrel_PlaySound ( $a )", {T(tone)}), "$-50:Vandrel_PlaySound: Error playing sound.")
        << "a tempo of 0 would never end";
}

TEST_F(PlaybackTest, EscapeInTheTerminalStopsASynchronousPlay) {
    const std::string tone = Tone("long.wav", 5);
    int terminal = -1;
    const pid_t child = forkpty(&terminal, nullptr, nullptr, nullptr);
    ASSERT_GE(child, 0);
    if (child == 0) {
        setenv("VANDREL_AUDIO", "virtual", 1);
        const std::string calc = "Vandrel_PlaySound ( \"" + tone + "\" )";
        execl(VDHOST_EXE, VDHOST_EXE, "--db", Path("Escape.vddb").c_str(), "eval", calc.c_str(), (char*)nullptr);
        _exit(127);
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(700));
    const auto pressed = Clock::now();
    ASSERT_EQ(write(terminal, "\x1b", 1), 1);
    int status = 0;
    // The sound lasts 5 s: a key that was not seen would keep the call for 4 s more. What is left
    // after the key is the host's shut-down, slow in the sanitizers' builds.
    ASSERT_TRUE(Within(std::chrono::milliseconds(3000), [&] { return waitpid(child, &status, WNOHANG) == child; }));
    EXPECT_LT(std::chrono::duration<double>(Clock::now() - pressed).count(), 2.5);
    std::string out;
    char buffer[512];
    for (ssize_t n; (n = read(terminal, buffer, sizeof buffer)) > 0;) out.append(buffer, size_t(n));
    close(terminal);
    EXPECT_NE(out.find("$-128:Vandrel_PlaySound: Error playing sound."), std::string::npos) << out;
}

TEST_F(PlaybackTest, EveryFailureHasItsStatusText) {
    const std::string tone = Tone("short.wav", 0.1);
    const std::string counts = "$-50:Vandrel_PlaySound: This function requires 1 to 4 parameters.";
    const std::pair<std::vector<FMX_Data>, std::string> cases[] = {
        {{}, counts},
        {{T(tone), N(0), N(0), N(1), N(2)}, counts},
        {{T(tone), N(0), T("soon")}, "$-50:Vandrel_PlaySound: Could not get parameter #3 as time."},
        {{T(tone), N(0), N(0), T("later")}, "$-50:Vandrel_PlaySound: Could not get parameter #4 as time."},
        {{T(Path("missing.wav"))}, "$-43:Vandrel_PlaySound: Could not get parameter #1 as sound."},
        {{T("")}, "$-50:Vandrel_PlaySound: The container in argument #1 seems to be empty."},
    };
    for (const auto& [arguments, expected] : cases) EXPECT_EQ(Call(kPlaySound, arguments).text, expected);
    EXPECT_EQ(Call(kPlayPause, {N(0), N(0)}).text, "$-50:Vandrel_PlayPause: This function requires 0 or 1 parameter.");

    // Vandrel_Get and Vandrel_Set hand their failures back as the call's error code.
    EXPECT_EQ(Call(kGet, {}).code, -50);
    EXPECT_EQ(Call(13, {}).text, "$-50:Vandrel_Get: This function requires exactly 1 parameter.");
    EXPECT_EQ(Call(kSet, {}).code, -50);
    EXPECT_EQ(Call(kGet, {T("loudness")}).code, -50);
    EXPECT_EQ(Call(13, {}).text, "$-50:Vandrel_Get: Invalid tag.");
    const CallAnswer tooMany = Call(kGet, {T("volume"), N(0), N(0)});
    EXPECT_EQ(tooMany.code, -50);
    EXPECT_EQ(tooMany.text, "0");
    EXPECT_EQ(Call(kSet, {T("tempo"), N(1), N(0), N(0)}).code, -50);
}

TEST_F(PlaybackTest, WithoutAnOutputNothingPlaysAndTheCallSaysWhy) {
    const std::string tone = Tone("short.wav", 0.1);
    // The output is the process's own: a host of its own with an output that cannot be had.
    for (const auto& [asynchronous, message] : {std::pair{"1", "Error adding sound to the asynchronous pool."},
                                               std::pair{"0", "Error playing sound."}}) {
        const auto r = runProcess({VDHOST_EXE, "--db", Path("NoOutput.vddb"), "eval",
                                   "Vandrel_PlaySound ( \"" + tone + "\" ; " + asynchronous + " )"},
                                  {{"VANDREL_AUDIO", "speakers"}});
        EXPECT_EQ(r.out, "$-200:Vandrel_PlaySound: " + std::string(message) + "\n") << r.err;
    }
}

TEST_F(PlaybackTest, WorkaroundWordsTakeTheirValueOredIn) {
    EXPECT_EQ(Text(u"Vandrel_Get ( \"RFWorkaround\" )"), "1");
    EXPECT_EQ(Text(u"Vandrel_Set ( \"rfworkaround\" ; 0 )"), "0");
    EXPECT_EQ(Text(u"Vandrel_Get ( \"rfworkaround\" )"), "1") << "0 only marks the word as set by the user";
    EXPECT_EQ(Text(u"Vandrel_Set ( \"EarlierQTCompatibility\" )"), "");
    EXPECT_EQ(Text(u"Vandrel_Get ( \"lmworkaround\" )"), "1");
    EXPECT_EQ(Text(u"Vandrel_Get ( \"quicktime-version\" )"), "770");
    EXPECT_EQ(Text(u"Vandrel_Get ( \"Recording\" )"), "0");
}

}  // namespace
}  // namespace vdtest
