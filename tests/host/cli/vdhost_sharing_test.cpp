// Many vdhost processes on one database at once, as a shell loop with "&" or a build system runs
// them: writers wait for each other, readers always get an answer, and nothing is lost.
#include "vdhost_runner.h"

#include <api/values.h>
#include <db/database.h>

#include <functional>

#include <sys/wait.h>

namespace vdtest {
namespace {

using Sharing = VdhostTest;

// Each vdhost run costs a few hundred milliseconds under the sanitizers: fewer rounds there keep the
// test within its time while still overlapping every process with the others.
#ifdef __SANITIZE_ADDRESS__
constexpr int kRounds = 12;
#else
constexpr int kRounds = 50;
#endif

// Runs body(0) ... body(count - 1) in child processes at once and answers how many of their
// vdhost runs failed, in total. A child that hangs is ended by its alarm, which counts as failures.
int failuresInParallel(int count, const std::function<int(int)>& body) {
    std::vector<pid_t> children;
    for (int i = 0; i < count; ++i) {
        pid_t pid = fork();
        if (pid == 0) {
            alarm(100);
            _exit(std::min(body(i), 100));
        }
        children.push_back(pid);
    }
    int failures = 0;
    for (pid_t child : children) {
        int status = 0;
        waitpid(child, &status, 0);
        failures += WIFEXITED(status) ? WEXITSTATUS(status) : 1000;
    }
    return failures;
}

TEST_F(Sharing, ParallelWritersAndReadersLoseNothingAndNeverFail) {
    constexpr int kWriters = 8, kReaders = 4, kWrites = kRounds, kSoundBytes = 6000;
    // A few KB of data, so that writes fill the WAL and checkpoints run while others open the file.
    const std::string base64(kSoundBytes / 3 * 4, 'Q');
    ASSERT_EQ(vdhost({"set", "Sounds::Start", "1"}).status, 0);

    int failures = failuresInParallel(kWriters + kReaders, [&](int i) {
        int failed = 0;
        for (int n = 0; n < kWrites; ++n) {
            ProcessResult r;
            if (i < kWriters) {
                std::string field = "Sounds::W" + std::to_string(i) + "_" + std::to_string(n);
                r = vdhost({"--no-plugins", "set", field, "Base64Decode ( \"" + base64 + "\" ; \"tone.snd\" )"});
            } else {
                r = vdhost({"--no-plugins", "eval", "Sounds::Start"});
                if (r.out != "1\n") ++failed;
            }
            if (r.status != 0) {
                ++failed;
                fprintf(stderr, "%s", r.err.c_str());
            }
        }
        return failed;
    });
    EXPECT_EQ(failures, 0);

    vdhost::db::Database database(db());
    EXPECT_EQ(database.fields().size(), kWriters * kWrites + 1u);
    for (int w = 0; w < kWriters; ++w)
        for (int n = 0; n < kWrites; ++n) {
            auto value = database.read("Sounds", "W" + std::to_string(w) + "_" + std::to_string(n));
            ASSERT_TRUE(value && !value->binary.streams.empty()) << w << " " << n;
            EXPECT_EQ(value->binary.streams[0].size(), size_t{kSoundBytes});
        }
}

TEST_F(Sharing, WritersRacingToMakeTheDatabaseAllSucceed) {
    const int failures = failuresInParallel(8, [&](int i) {
        return int(vdhost({"--no-plugins", "set", "T::F" + std::to_string(i), "1"}).status != 0);
    });
    EXPECT_EQ(failures, 0);
    EXPECT_EQ(vdhost::db::Database(db()).fields().size(), 8u);
}

TEST_F(Sharing, ParallelIncrementsCountExactly) {
    constexpr int kProcesses = 8, kIncrements = kRounds;
    ASSERT_EQ(vdhost({"set", "T::C", "0"}).status, 0);
    int failures = failuresInParallel(kProcesses, [&](int i) {
        int failed = 0;
        for (int n = 0; n < kIncrements; ++n) {
            // Half through set, half through a script's store, which must be just as atomic.
            auto r = i % 2 ? vdhost({"--no-plugins", "set", "T::C", "T::C + 1"})
                           : vdhost({"--no-plugins", "run", "-"}, {}, "T::C := T::C + 1\n");
            failed += r.status != 0;
        }
        return failed;
    });
    EXPECT_EQ(failures, 0);
    EXPECT_EQ(vdhost({"get", "T::C"}).out, std::to_string(kProcesses * kIncrements) + "\n");
}

}  // namespace
}  // namespace vdtest
