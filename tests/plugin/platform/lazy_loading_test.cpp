// FFmpeg and libvips are loaded by the first function that needs them, never by the start of the
// host; and when they cannot be loaded then, the function answers its status like any other failure.
// Each case is a vdhost run of its own: a process loads the libraries once, so only a fresh one shows
// what a call loads.
#include "plugin/platform/media/media_fixtures.h"
#include "plugin/plugin_test_support.h"

namespace vdtest {
namespace {

class LazyLoadingTest : public ::testing::Test {
protected:
    LazyLoadingTest() {
        writeFile(folder_ / "tone.wav", media::SineWav(4410, 2));
        // The same header with A-law samples: a WAV file that only the libraries read.
        std::string law = media::SineWav(4410, 1, 44100, 8);
        law[20] = 6;
        writeFile(folder_ / "law.wav", law);
    }

    ProcessResult Eval(const std::string& calculation, const std::map<std::string, std::string>& environment = {}) {
        return runProcess({VDHOST_EXE, "--plugins", VD_PLUGIN_DIR, "--db", (folder_ / "t.vddb").string(), "eval",
                           calculation},
                          environment);
    }
    // The status the calculation left (Vandrel_GetLastError), asked in the same run.
    std::string Status(const std::string& calculation, const std::map<std::string, std::string>& environment) {
        const ProcessResult r = Eval("Let ( [ r = " + calculation + " ] ; Vandrel_GetLastError )", environment);
        EXPECT_EQ(r.status, 0) << r.err;
        return r.out;
    }
    std::string Quoted(const char* name) const { return "\"" + (folder_ / name).string() + "\""; }
    std::string Tone() const { return Quoted("tone.wav"); }
    std::string Law() const { return Quoted("law.wav"); }
    std::string Waveform(const std::string& sound) const {
        return "Vandrel_DrawWaveform ( " + sound + " ; \"1\" ; 300 ; 200 ; \"\" ; \"\" )";
    }

    TempFolder folder_;
};

// The dynamic linker's own account (LD_DEBUG=files) names every library a run maps, whether the
// program needed it or something loaded it with dlopen.
TEST_F(LazyLoadingTest, EachLibraryIsLoadedByTheFirstCallThatNeedsItOnly) {
    struct Case { std::string calculation; bool ffmpeg, vips; };
    const Case cases[] = {
        {"1", false, false},
        {"Vandrel_CreateSound ( \"sine\" ; 1 ; 440 )", false, false},
        {"Vandrel_GetSoundInfo ( \"" + (folder_ / "none.wav").string() + "\" )", false, false},
        {"Vandrel_GetSoundInfo ( " + Tone() + " )", false, false},  // plain PCM WAV: read by ourselves
        {"Vandrel_GetSoundInfo ( " + Law() + " )", true, false},
        {Waveform(Tone()), false, true},
        {Waveform(Law()), true, true},
    };
    for (const auto& c : cases) {
        const ProcessResult r = Eval(c.calculation, {{"LD_DEBUG", "files"}});
        ASSERT_EQ(r.status, 0) << c.calculation << "\n" << r.err;
        for (const char* library : {"libavformat.so.59", "libavcodec.so.59", "libswresample.so.4", "libavutil.so.57"})
            EXPECT_EQ(r.err.find(std::string("file=") + library) != std::string::npos, c.ffmpeg)
                << c.calculation << ": " << library;
        EXPECT_EQ(r.err.find("file=libvips.so.42") != std::string::npos, c.vips) << c.calculation;
    }
}

TEST_F(LazyLoadingTest, LibrariesThatCannotBeLoadedFailTheCallWithItsStatus) {
    // The start-up check finds the files, so the plug-in starts; the load at first use then fails.
    const std::map<std::string, std::string> noFfmpeg{{"VANDREL_MEDIA_LAYER", "unloadable"}};
    const std::map<std::string, std::string> noVips{{"VANDREL_GRAPHICS_LAYER", "unloadable"}};
    EXPECT_EQ(Status("Vandrel_GetSoundInfo ( " + Law() + " )", noFfmpeg),
              "$-2003:Vandrel_GetSoundInfo: Could not get parameter #1 as sound.\n");
    EXPECT_EQ(Status(Waveform(Law()), noFfmpeg), "$-2003:Vandrel_DrawWaveform: Could not get parameter #1 as movie.\n");
    EXPECT_EQ(Status(Waveform(Tone()), noVips), "$-2005:Vandrel_DrawWaveform: Failed to put picture into container.\n");
    // What needs neither library still works without them.
    EXPECT_EQ(Status("Vandrel_CreateSound ( \"sine\" ; 1 ; 440 )",
                     {{"VANDREL_MEDIA_LAYER", "unloadable"}, {"VANDREL_GRAPHICS_LAYER", "unloadable"}}),
              "$0:Vandrel_CreateSound: No error.\n");
    EXPECT_EQ(Status("Vandrel_GetSoundInfo ( " + Tone() + " )", noVips), "$0:Vandrel_GetSoundInfo: No error.\n");
    EXPECT_EQ(Status("Vandrel_Amplify ( " + Tone() + " ; 2 )", noFfmpeg), "$0:Vandrel_Amplify: No error.\n");
}

}  // namespace
}  // namespace vdtest
