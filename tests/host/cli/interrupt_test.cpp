// Long calls. Ctrl-C and SIGTERM while vdhost works: the call ends with 128 + signal and a short
// message, a statement that was storing keeps nothing, and the prompt survives Ctrl-C. A call that
// runs for more than a second shows its time on a terminal's stderr, and clears the line when it
// ends; a stderr that is not a terminal gets nothing.
#include "vdhost_runner.h"

#include <chrono>
#include <csignal>
#include <thread>

#include <pty.h>
#include <sys/wait.h>

namespace vdtest {
namespace {

using namespace std::chrono_literals;

class Interrupt : public VdhostTest {
protected:
    // Runs vdhost as vdhost() does, sends it signalNumber once a Fixture_Sleep call is under way,
    // and answers what it did and how long it took after the signal.
    struct Outcome {
        ProcessResult result;
        std::chrono::duration<double> afterSignal{};
    };
    Outcome interrupted(const std::vector<std::string>& args, int signalNumber, const std::string& input = "") {
        const auto sleeping = folder / "sleeping";
        std::filesystem::remove(sleeping);
        StartedProcess running(command(args), {{"VDFIXTURE_STARTUP", ""}, {"VDFIXTURE_SLEEPING", sleeping.string()}},
                               input, folder.path().string());
        // Only once the statement is under way, however slowly the machine starts the process.
        for (int waited = 0; !std::filesystem::exists(sleeping) && waited < 2000; ++waited)
            std::this_thread::sleep_for(10ms);
        std::this_thread::sleep_for(100ms);
        kill(running.pid(), signalNumber);
        const auto sent = std::chrono::steady_clock::now();
        Outcome outcome{running.finish()};
        outcome.afterSignal = std::chrono::steady_clock::now() - sent;
        return outcome;
    }
};

TEST_F(Interrupt, ASignalEndsTheCallAndTheStatementStoresNothing) {
    ASSERT_EQ(vdhost({"set", "T::N", "1"}).status, 0);

    // The call returns soon after the signal: the statement ends there, rolled back.
    auto o = interrupted({"set", "T::N", "T::N + Fixture_Sleep ( 1.2 )"}, SIGINT);
    EXPECT_EQ(o.result.status, 130) << o.result.err;
    EXPECT_EQ(o.result.err, "vdhost: Interrupted.\n");

    // A call that goes on much longer is not waited for: the process ends itself while its write
    // transaction is open, and SQLite drops what it wrote.
    o = interrupted({"set", "T::N", "Let ( [ a = T::N + 5 ] ; Fixture_Sleep ( 30 ) )"}, SIGTERM);
    EXPECT_EQ(o.result.status, 143);
    EXPECT_NE(o.result.err.find("Interrupted"), std::string::npos) << o.result.err;
    EXPECT_LT(o.afterSignal, 5s);

    // A script keeps what the statements before the interrupted one stored.
    o = interrupted({"run", "-"}, SIGINT, "T::Before := 7\nT::N := Fixture_Sleep ( 1 )\nT::After := 8\n");
    EXPECT_EQ(o.result.status, 130);

    // Nobody is left waiting on a lock of the ended processes.
    auto r = vdhost({"run", "-"}, {}, "print T::N\nprint T::Before\nT::N := T::N + 1\nprint T::N\n");
    EXPECT_EQ(r.out, "1\n7\n2\n") << r.err;
    EXPECT_EQ(vdhost({"fields"}).out, "T::N\tnumber\nT::Before\tnumber\n");
    for (const auto& entry : std::filesystem::directory_iterator(folder.path()))
        EXPECT_EQ(entry.path().filename().string().find(".new-"), std::string::npos) << entry.path();
}

TEST_F(Interrupt, CtrlCEndsTheCalculationAndThePromptGoesOn) {
    auto o = interrupted({"repl"}, SIGINT, "T::X := Fixture_Sleep ( 1 )\n6 * 7\n");
    EXPECT_EQ(o.result.status, 0) << o.result.err;
    EXPECT_EQ(o.result.out, "42\n");
    EXPECT_EQ(o.result.err, "vdhost: Interrupted.\n");
    EXPECT_EQ(vdhost({"fields"}).out, "");
}

using ElapsedTime = VdhostTest;

// Runs argv with a pseudo-terminal as its standard streams; answers everything it wrote there.
std::string runOnTerminal(const std::vector<std::string>& argv, const std::string& folder) {
    int master = -1;
    pid_t pid = forkpty(&master, nullptr, nullptr, nullptr);
    if (pid == 0) {  // the child: runs argv in folder with the fixture plug-in starting normally
        if (chdir(folder.c_str()) != 0) _exit(126);
        unsetenv("VDFIXTURE_STARTUP");
        std::vector<char*> raw;
        for (const auto& a : argv) raw.push_back(const_cast<char*>(a.c_str()));
        raw.push_back(nullptr);
        execv(raw[0], raw.data());
        _exit(127);
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
