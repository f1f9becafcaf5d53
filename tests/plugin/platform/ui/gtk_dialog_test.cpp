// The real GTK folder chooser, shown on a virtual display by a vdhost process. The bundle is a copy
// whose ui-gtk.so is the tests' build of the module, which cancels its dialog once it is on the
// screen and writes down what it showed.
#include "plugin/plugin_test_support.h"

#include <support/process.h>
#include <support/temp_folder.h>

#include <gtest/gtest.h>


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
                              nullptr};
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

TEST(GtkDialog, TheFolderChooserAppearsAtTheDefaultFolderAndIsCancelled) {
    const fs::path testModule = fs::path(VD_BUILD_DIR) / "tests" / "ui-gtk-test" / "ui-gtk.so";
    if (programOnPath("Xvfb").empty()) GTEST_SKIP() << "Xvfb is not installed";
    if (!fs::exists(testModule)) GTEST_SKIP() << "the GTK module was not built (no GTK 3)";

    TempFolder folder;
    const fs::path plugins = folder / "plugins";
    fs::create_directories(plugins / "Vandrel.fmxplugin");
    fs::copy(VandrelBundle(), plugins / "Vandrel.fmxplugin", fs::copy_options::recursive);
    fs::copy_file(testModule, plugins / "Vandrel.fmxplugin" / "Resources" / "ui-gtk.so",
                  fs::copy_options::overwrite_existing);
    fs::create_directories(folder / "start here");

    VirtualDisplay display;
    ASSERT_FALSE(display.Name().empty()) << "Xvfb did not start";
    const fs::path report = folder / "shown.txt";
    const auto r = runProcess(
        {VDHOST_EXE, "--db", (folder / "T.vddb").string(), "--plugins", plugins.string(), "eval",
         "Vandrel_SetDefaultFolder ( \"" + (folder / "start here").string() +
             "\" ) & Vandrel_SetDefaultFolder ( \".U:Pick the sound folder\" ) & \"|\" & Vandrel_GetDefaultFolder"},
        {{"DISPLAY", display.Name()}, {"WAYLAND_DISPLAY", ""}, {"VANDREL_UI_SCRIPT", ""},
         {"VD_UI_GTK_TEST_REPORT", report.string()}, {"HOME", folder.path().string()},
         {"XDG_RUNTIME_DIR", ""}, {"NO_AT_BRIDGE", "1"}, {"GTK_A11Y", "none"},
         // GTK and fontconfig keep their caches until the process ends; the leak checker of a
         // sanitizer build would count those as ours and fail the run.
         {"ASAN_OPTIONS", "detect_leaks=0"}});
    EXPECT_EQ(r.status, 0) << r.err;
    EXPECT_EQ(r.out, "$0:Vandrel_SetDefaultFolder: Cancel|" + (folder / "start here").string() + "\n") << r.err;
    EXPECT_EQ(readFile(report),
              "shown=1\ntitle=Pick the sound folder\nfolder=" + (folder / "start here").string() + "\nchooser=1\n");
}

}  // namespace
}  // namespace vdtest
