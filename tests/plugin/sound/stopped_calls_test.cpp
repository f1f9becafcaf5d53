// A vdhost stopped in the middle of a sound function: told to stop (Ctrl-C, kill), it takes the
// function's temporary files with it; killed outright, it leaves them to the next start, which
// removes them unless their process is still alive. A host that goes on after the signal (a prompt)
// gets the call back early, as cancelled.
#include "plugin/sound/sound_test_support.h"

#include <support/process.h>
#include <support/temp_folder.h>

#include <algorithm>
#include <chrono>
#include <cstring>
#include <list>
#include <map>
#include <thread>

#include <signal.h>
#include <sys/wait.h>

namespace vdtest {
namespace {

namespace fs = std::filesystem;

// Ten minutes of 24-bit mono: every function converts it to 16-bit PCM first, in a temporary
// file, which takes long enough to be caught at.
void WriteLongWav(const fs::path& path) { writeFile(path, media::PcmWav(std::string(44100 * 600 * 3, '\0'), 1, 44100, 24)); }

class StoppedCallTest : public ::testing::Test {
protected:
    StoppedCallTest() {
        fs::create_directories(root_ / "tmp");
        WriteLongWav(root_ / "long.wav");
    }

    std::vector<std::string> Command(const std::string& calculation) const {
        return {VDHOST_EXE, "--plugins", VD_PLUGIN_DIR, "--db", (root_ / "Base.vddb").string(), "eval", calculation};
    }
    std::map<std::string, std::string> Environment() const { return {{"TMPDIR", (root_ / "tmp").string()}}; }

    fs::path TemporaryItems() const { return root_ / "tmp" / ("vandrel-" + std::to_string(::getuid())); }

    // The names in the temporary folder that start with one of the prefixes, with their sizes.
    std::map<std::string, uintmax_t> Names(std::initializer_list<const char*> prefixes) const {
        std::map<std::string, uintmax_t> names;
        std::error_code ec;
        for (const auto& entry : fs::directory_iterator(TemporaryItems(), ec)) {
            const std::string name = entry.path().filename().string();
            for (const char* prefix : prefixes)
                if (name.rfind(prefix, 0) == 0) names[name] = fs::file_size(entry.path(), ec);
        }
        return names;
    }
    std::vector<std::string> TemporaryFiles() const {
        std::vector<std::string> names;
        for (const auto& [name, size] : Names({"temp-", ".temp-"})) names.push_back(name);
        return names;
    }

    // Starts a conversion, waits until a temporary file and a ledger of its own are there (a ledger
    // has a size once it lists a file), and holds the process right there (SIGSTOP), so that what
    // the test does next meets the call mid-way.
    StartedProcess* StartConversionAndCatchIt() {
        const auto before = Names({"temp-", ".ledger-"});
        const auto caught = [&] {
            bool file = false, ledger = false;
            for (const auto& [name, size] : Names({"temp-", ".ledger-"})) {
                if (before.count(name)) continue;
                if (name[0] == 't') file = true;
                else ledger = ledger || (size > 0 && size != uintmax_t(-1));
            }
            return file && ledger;
        };
        StartedProcess& process = running_.emplace_back(
            Command("Vandrel_Normalize ( \"" + (root_ / "long.wav").string() + "\" )"), Environment());
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(60);
        while (!caught()) {
            siginfo_t ended{};  // looked at, not reaped: the process's owner waits for it
            ::waitid(P_PID, id_t(process.pid()), &ended, WEXITED | WNOHANG | WNOWAIT);
            if (std::chrono::steady_clock::now() > deadline || ended.si_pid == process.pid()) {
                ADD_FAILURE() << "the call ended or never made its temporary file";
                return nullptr;
            }
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
        ::kill(process.pid(), SIGSTOP);
        return &process;
    }

    TempFolder root_;
    std::list<StartedProcess> running_;
};

TEST_F(StoppedCallTest, StopSignalsTakeTheCallsTemporaryFilesWithThem) {
    for (int signal : {SIGINT, SIGTERM}) {
        StartedProcess* call = StartConversionAndCatchIt();
        ASSERT_TRUE(call);
        ::kill(call->pid(), signal);
        ::kill(call->pid(), SIGCONT);
        EXPECT_NE(call->finish().status, 0) << strsignal(signal);
        EXPECT_EQ(TemporaryFiles(), std::vector<std::string>{}) << strsignal(signal);
    }
}

TEST_F(StoppedCallTest, NextStartSweepsFilesOfAKilledProcessButNotOfALiveOne) {
    StartedProcess* killed = StartConversionAndCatchIt();
    ASSERT_TRUE(killed);
    ::kill(killed->pid(), SIGKILL);
    killed->finish();
    const std::vector<std::string> abandoned = TemporaryFiles();
    ASSERT_FALSE(abandoned.empty());

    StartedProcess* live = StartConversionAndCatchIt();
    ASSERT_TRUE(live);
    // The live call's files are there too now; a plug-in starting beside it sweeps only the others.
    EXPECT_EQ(runProcess(Command("1"), Environment()).status, 0);
    const std::vector<std::string> left = TemporaryFiles();
    EXPECT_FALSE(left.empty());
    for (const std::string& name : abandoned) EXPECT_EQ(std::count(left.begin(), left.end(), name), 0) << name;

    ::kill(live->pid(), SIGTERM);
    ::kill(live->pid(), SIGCONT);
    live->finish();
    EXPECT_EQ(TemporaryFiles(), std::vector<std::string>{});
}

// A host whose own handler lets the process go on, as a prompt does.
class PromptLikeHost {
public:
    PromptLikeHost() {
        struct sigaction ignoreIt {};
        ignoreIt.sa_handler = [](int) {};
        sigemptyset(&ignoreIt.sa_mask);
        ::sigaction(SIGINT, &ignoreIt, &previous_);
    }
    ~PromptLikeHost() { ::sigaction(SIGINT, &previous_, nullptr); }

private:
    struct sigaction previous_ {};
};

class CancelledCallTest : public PromptLikeHost, public SoundSessionTest {};

TEST_F(CancelledCallTest, ASignalMidCallCancelsItAndTheNextCallRunsAsUsual) {
    WriteLongWav(Data() / "long.wav");
    std::thread signaller([this] {
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(30);
        while (LeftoverTemporaryFiles().empty() && std::chrono::steady_clock::now() < deadline)
            std::this_thread::sleep_for(std::chrono::microseconds(200));
        ::kill(::getpid(), SIGINT);
    });
    const std::string answer = Text(u"Vandrel_Amplify ( \"long.wav\" ; 2 )");
    signaller.join();
    EXPECT_EQ(answer, "$-128:Vandrel_Amplify: Could not convert sound.");
    EXPECT_EQ(LeftoverTemporaryFiles(), std::vector<std::string>{});
    EXPECT_EQ(SoundStreamOf(Eval(u"Vandrel_CreateSound ( \"sine\" ; 0.1 ; \"C4\" )")).empty(), false);
}

}  // namespace
}  // namespace vdtest
