// The real GTK folder chooser and settings form, shown on a virtual display by a vdhost process.
// The bundle is a copy whose ui-gtk.so is the tests' build of the module, which cancels its dialog
// once it is on the screen and writes down what it showed.
#include "plugin/image/image_test_support.h"
#include "plugin/plugin_test_support.h"

#include <support/process.h>
#include <support/temp_folder.h>

#include <gtest/gtest.h>

#include <chrono>
#include <map>
#include <optional>
#include <thread>

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

extern char** environ;

namespace vdtest {
namespace {

namespace fs = std::filesystem;

// Xvfb on a display it picks itself (-displayfd), stopped when the test ends.
class VirtualDisplay {
public:
    VirtualDisplay() {
        int pipeFds[2];
        if (pipe(pipeFds) != 0) return;
        const std::string fdText = std::to_string(pipeFds[1]);
        const char* argv[] = {"Xvfb", "-displayfd", fdText.c_str(), "-screen", "0", "1024x768x24", "-nolisten", "tcp",
                              // The server keeps its state (a button held down) while no client is connected.
                              "-noreset", nullptr};
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_addclose(&actions, pipeFds[0]);
        posix_spawn_file_actions_addopen(&actions, 2, "/dev/null", O_WRONLY, 0);
        if (posix_spawnp(&pid_, "Xvfb", &actions, nullptr, const_cast<char**>(argv), environ) != 0) pid_ = -1;
        posix_spawn_file_actions_destroy(&actions);
        close(pipeFds[1]);
        std::string number;
        char c;
        while (pid_ > 0 && read(pipeFds[0], &c, 1) == 1 && c != '\n') number.push_back(c);
        close(pipeFds[0]);
        if (!number.empty()) display_ = ":" + number;
    }
    ~VirtualDisplay() {
        if (pid_ > 0) {
            kill(pid_, SIGTERM);
            waitpid(pid_, nullptr, 0);
        }
    }
    VirtualDisplay(const VirtualDisplay&) = delete;
    VirtualDisplay& operator=(const VirtualDisplay&) = delete;

    const std::string& Name() const { return display_; }

private:
    pid_t pid_ = -1;
    std::string display_;
};

// A copy of the bundle whose ui-gtk.so is the self-cancelling build, evaluating one calculation in a
// vdhost process on a virtual display; the module's report of what it showed lands in Report().
class GtkDialog : public ::testing::Test {
protected:
    void SetUp() override {
        const fs::path testModule = fs::path(VD_BUILD_DIR) / "tests" / "ui-gtk-test" / "ui-gtk.so";
        if (programOnPath("Xvfb").empty()) GTEST_SKIP() << "Xvfb is not installed";
        if (!fs::exists(testModule)) GTEST_SKIP() << "the GTK module was not built (no GTK 3)";
        fs::create_directories(Plugins() / "Vandrel.fmxplugin");
        fs::copy(VandrelBundle(), Plugins() / "Vandrel.fmxplugin", fs::copy_options::recursive);
        fs::copy_file(testModule, Plugins() / "Vandrel.fmxplugin" / "Resources" / "ui-gtk.so",
                      fs::copy_options::overwrite_existing);
        display_.emplace();
        ASSERT_FALSE(display_->Name().empty()) << "Xvfb did not start";
    }

    fs::path Plugins() const { return folder_ / "plugins"; }
    fs::path Report() const { return folder_ / "shown.txt"; }

    std::vector<std::string> Command(const std::string& calculation) const {
        return {VDHOST_EXE, "--db", (folder_ / "T.vddb").string(), "--plugins", Plugins().string(), "eval", calculation};
    }
    std::map<std::string, std::string> Environment() const {
        return {{"DISPLAY", display_->Name()}, {"WAYLAND_DISPLAY", ""}, {"VANDREL_UI_SCRIPT", ""},
                {"VD_UI_GTK_TEST_REPORT", Report().string()}, {"HOME", folder_.path().string()},
                {"XDG_RUNTIME_DIR", ""}, {"NO_AT_BRIDGE", "1"}, {"GTK_A11Y", "none"},
                // A recording the mouse fails to end still ends, after 15 s.
                {"VANDREL_AUDIO", "virtual:in=tone,length=15"},
                // GTK and fontconfig keep their caches until the process ends; the leak checker of a
                // sanitizer build would count those as ours and fail the run.
                {"ASAN_OPTIONS", "detect_leaks=0"}};
    }
    ProcessResult Eval(const std::string& calculation) { return runProcess(Command(calculation), Environment()); }
    void Mouse(const char* action) {
        ASSERT_EQ(runProcess({programOnPath("xdotool"), action, "1"}, {{"DISPLAY", display_->Name()}}).status, 0);
    }

    TempFolder folder_;
    std::optional<VirtualDisplay> display_;
};

TEST_F(GtkDialog, TheFolderChooserAppearsAtTheDefaultFolderAndIsCancelled) {
    const fs::path start = folder_ / "start here";
    fs::create_directories(start);
    const auto r = Eval("Vandrel_SetDefaultFolder ( \"" + start.string() +
                        "\" ) & Vandrel_SetDefaultFolder ( \".U:Pick the sound folder\" ) & \"|\" & "
                        "Vandrel_GetDefaultFolder");
    EXPECT_EQ(r.status, 0) << r.err;
    EXPECT_EQ(r.out, "$0:Vandrel_SetDefaultFolder: Cancel|" + start.string() + "\n") << r.err;
    EXPECT_EQ(readFile(Report()), "shown=1\ntitle=Pick the sound folder\nfolder=" + start.string() + "\nchooser=1\n");
}

TEST_F(GtkDialog, TheSoundSettingsFormAppearsWithItsChoicesAndIsCancelled) {
    const auto r = Eval("Vandrel_SoundFormatDialog ( \"WAVE\" )");
    EXPECT_EQ(r.status, 0) << r.err;
    EXPECT_TRUE(r.out.starts_with("$-128:Vandrel_SoundFormatDialog")) << r.out << r.err;
    const std::string report = readFile(Report());
    EXPECT_TRUE(report.starts_with("shown=1\ntitle=WAVE Settings\n")) << report;
    EXPECT_NE(report.find("chooser=0\ncontrol=Sample rate:Same as the sound\n"), std::string::npos) << report;
}

TEST_F(GtkDialog, AnEffectFormAppearsWithItsSlidersAndPreviewAndIsCancelled) {
    const fs::path picture = folder_ / "picture.bmp";
    writeFile(picture, BmpOf(MakePicture(64, 48, [](int x, int y) { return Rgb{uint8_t(4 * x), uint8_t(5 * y), 60}; })));
    const auto r = Eval("Vandrel_EffectDialog ( \"sharpen amount=2.5\" ; \"" + picture.string() + "\" )");
    EXPECT_EQ(r.status, 0) << r.err;
    EXPECT_TRUE(r.out.starts_with("$-128:Vandrel_EffectDialog")) << r.out << r.err;
    const std::string report = readFile(Report());
    EXPECT_TRUE(report.starts_with("shown=1\ntitle=Sharpen\n")) << report;
    EXPECT_NE(report.find("slider=Amount:2.5\nslider=Radius:1\npreview=320x240\n"), std::string::npos) << report;
}

TEST_F(GtkDialog, TheMouseButtonIsAskedOfTheDisplayAndEndsARecording) {
    if (programOnPath("xdotool").empty()) GTEST_SKIP() << "xdotool is not installed";
    EXPECT_EQ(Eval("Vandrel_GetMouseUp").out, "1\n");
    Mouse("mousedown");
    EXPECT_EQ(Eval("Vandrel_GetMouseUp").out, "0\n");
    Mouse("mouseup");

    // A recording that waits for the person: the tone goes on until the button is pressed.
    const std::string take = (folder_ / "take.mov").string();
    StartedProcess recording(Command("Vandrel_RecordSoundStart ( \"" + take + "\" )"), Environment());
    std::this_thread::sleep_for(std::chrono::milliseconds(1500));
    Mouse("mousedown");
    const ProcessResult r = recording.finish();
    Mouse("mouseup");
    EXPECT_EQ(r.status, 0) << r.err;
    EXPECT_NE(r.out.find("moviemac:" + take), std::string::npos) << r.out << r.err;
    const ProcessResult probe = runProcess({programOnPath("ffprobe"), "-v", "error", "-show_entries", "format=duration", "-of",
                                            "csv=p=0", take});
    const double seconds = std::stod(probe.out);
    EXPECT_GT(seconds, 0.5) << "it recorded until the press, not just until GTK had loaded";
    EXPECT_LT(seconds, 10) << "the press ended it";
}

}  // namespace
}  // namespace vdtest
