// A calculation that runs for more than a second shows its time on a terminal's stderr, and clears
// the line when it ends; a stderr that is not a terminal gets nothing.
#include "vdhost_runner.h"

#include <pty.h>
#include <sys/wait.h>

namespace vdtest {
namespace {

using ElapsedTime = VdhostTest;

// Runs argv with a pseudo-terminal as its standard streams; answers everything it wrote there.
std::string runOnTerminal(const std::vector<std::string>& argv, const std::string& folder) {
    int master = -1;
    pid_t pid = forkpty(&master, nullptr, nullptr, nullptr);
    if (pid == 0) {
        execIn(folder, argv);
    }
    std::string written;
    char buffer[256];
    ssize_t n;
    // Reading ends with EIO once the child has gone and the terminal's last user closed it.
    while ((n = read(master, buffer, sizeof buffer)) > 0) written.append(buffer, static_cast<size_t>(n));
    close(master);
    waitpid(pid, nullptr, 0);
    return written;
}

TEST_F(ElapsedTime, ShownOnATerminalOnlyAndClearedAtTheEnd) {
    std::vector<std::string> argv = command({"eval", "Fixture_Sleep ( 1.5 )"});
    const std::string shown = runOnTerminal(argv, folder.path().string());
    const size_t line = shown.find("\r  working\u2026 1.");
    ASSERT_NE(line, std::string::npos) << shown;
    const size_t cleared = shown.find("\r\033[K", line);
    ASSERT_NE(cleared, std::string::npos) << shown;
    EXPECT_NE(shown.find("1.5", cleared), std::string::npos) << shown;  // the result, after the line

    // A short calculation shows nothing, nor does a long one whose stderr is a file.
    argv.back() = "Fixture_Sleep ( 0.1 )";
    EXPECT_EQ(runOnTerminal(argv, folder.path().string()), "0.1\r\n");
    auto r = vdhost({"eval", "Fixture_Sleep ( 1.2 )"});
    EXPECT_EQ(r.err, "");
    EXPECT_EQ(r.out, "1.2\n");
}

}  // namespace
}  // namespace vdtest
