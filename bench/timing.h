// What the benchmarks share: running a program as a script would (output thrown away) and taking the
// median of repeated runs.
#pragma once

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include <fcntl.h>
#include <stdlib.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

extern char** environ;

namespace vdbench {

using Clock = std::chrono::steady_clock;

inline constexpr int kRuns = 7;

inline double Median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

inline double Seconds(Clock::duration d) { return std::chrono::duration<double>(d).count(); }

// Wall time of one run in seconds, its output thrown away; negative when it could not start or failed.
// peakKilobytes, when given, receives the run's peak resident memory, and cpuSeconds its user and
// system time (which other work on a shared machine disturbs less than the wall time).
// Starts a program found on PATH, its output thrown away; its pid, or -1 when it could not start.
inline pid_t Start(const std::vector<std::string>& args) {
    std::vector<char*> argv;
    for (const auto& a : args) argv.push_back(const_cast<char*>(a.c_str()));
    argv.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&actions, 2, "/dev/null", O_WRONLY, 0);
    pid_t pid = 0;
    const int rc = posix_spawnp(&pid, argv[0], &actions, nullptr, argv.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    return rc == 0 ? pid : -1;
}

inline double Run(const std::vector<std::string>& args, long* peakKilobytes = nullptr, double* cpuSeconds = nullptr) {
    const auto start = Clock::now();
    const pid_t pid = Start(args);
    if (pid < 0) return -1;
    int status = 0;
    rusage usage{};
    wait4(pid, &status, 0, &usage);
    const double seconds = Seconds(Clock::now() - start);
    if (peakKilobytes) *peakKilobytes = usage.ru_maxrss;
    auto timeOf = [](const timeval& t) { return double(t.tv_sec) + double(t.tv_usec) / 1e6; };
    if (cpuSeconds) *cpuSeconds = timeOf(usage.ru_utime) + timeOf(usage.ru_stime);
    return WIFEXITED(status) && WEXITSTATUS(status) == 0 ? seconds : -1;
}

// One run of each command, in the round-th of all the orders they can run in: the memory a big
// run frees is given out anew to the run after it, slower or faster by what the machine does with
// freed memory, so over as many rounds as there are orders each tool follows each other tool alike
// (a rotation would not do: in the cycle a b c a b c, a always follows c). The times in the
// commands' order, negative for a failed run.
inline std::vector<double> RunInTurn(const std::vector<std::vector<std::string>>& commands, int round) {
    std::vector<size_t> order(commands.size());
    for (size_t k = 0; k < order.size(); ++k) order[k] = k;
    size_t orders = 1;
    for (size_t k = 2; k <= order.size(); ++k) orders *= k;
    for (size_t r = 0; r < size_t(round) % orders; ++r) std::next_permutation(order.begin(), order.end());
    std::vector<double> times(commands.size());
    for (const size_t which : order) times[which] = Run(commands[which]);
    return times;
}

// The median of `runs` runs after one warm-up run; negative when any run failed.
inline double MedianOf(const std::vector<std::string>& args, int runs = kRuns) {
    if (Run(args) < 0) return -1;
    std::vector<double> times;
    for (int i = 0; i < runs; ++i) {
        const double t = Run(args);
        if (t < 0) return -1;
        times.push_back(t);
    }
    return Median(times);
}

// The arguments of the benchmarks that run vdhost: VDHOST PLUGIN_DIR. false (after the usage) when
// they are not given.
inline bool ReadHostBenchArguments(int argc, char** argv, std::string& vdhost, std::string& plugins) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: %s VDHOST PLUGIN_DIR\n", argv[0]);
        return false;
    }
    vdhost = argv[1], plugins = argv[2];
    return true;
}

// A new folder of the benchmark's own under the system's temporary folder ("vd-<name>-XXXXXX");
// empty when it cannot be made.
inline std::filesystem::path MakeBenchFolder(const std::string& name) {
    std::string pattern = (std::filesystem::temp_directory_path() / ("vd-" + name + "-XXXXXX")).string();
    if (!mkdtemp(pattern.data())) return {};
    return pattern;
}

}  // namespace vdbench
