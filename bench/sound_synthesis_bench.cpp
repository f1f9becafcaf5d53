// Synthesis of 60 seconds through the host, against the tool a user would pick instead:
//   vdhost eval 'Vandrel_CreateSound ( "sine" ; 60 ; 440 )' --out x.snd
//   sox -n -r 44100 -b 16 -c 2 x.wav synth 60 sine 440                 (target: ratio <= 1.0)
// Both sides are whole program runs, started from here as a script would start them, so ours
// includes the host's start-up and the plug-in's load. The start-up itself (vdhost eval '1') is
// measured beside them, bare and with the plug-in loaded (target: <= 40 ms; FFmpeg and libvips are
// loaded by the first function that needs them, so synthesis pays for neither). Medians of the
// runs; the ratio is ours / theirs.
//   sound_synthesis_bench VDHOST PLUGIN_DIR
#include "timing.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include <fcntl.h>
#include <spawn.h>
#include <stdlib.h>
#include <sys/wait.h>
#include <unistd.h>

namespace fs = std::filesystem;
using namespace vdbench;

int main(int argc, char** argv) {
    std::string vdhost, plugins;
    if (!ReadHostBenchArguments(argc, argv, vdhost, plugins)) return 2;
    const fs::path folder = MakeBenchFolder("synth-bench");
    if (folder.empty()) return 1;
    const std::string db = (folder / "bench.vddb").string();

    // Start-ups are short and noisy: more runs for them.
    constexpr int kStartUpRuns = 15;
    const double bare = MedianOf({vdhost, "--no-plugins", "--db", db, "eval", "1"}, kStartUpRuns);
    const double startUp = MedianOf({vdhost, "--plugins", plugins, "--db", db, "eval", "1"}, kStartUpRuns);
    const double ours = MedianOf({vdhost, "--plugins", plugins, "--db", db, "--out", (folder / "x.snd").string(), "eval",
                                  "Vandrel_CreateSound ( \"sine\" ; 60 ; 440 )"});
    const double sox = MedianOf({"sox", "-n", "-r", "44100", "-b", "16", "-c", "2", (folder / "x.wav").string(), "synth",
                                 "60", "sine", "440"});
    const auto snd = fs::exists(folder / "x.snd") ? fs::file_size(folder / "x.snd") : 0;
    std::error_code ec;
    fs::remove_all(folder, ec);

    std::printf("runs: median of %d after one warm-up (start-ups: %d)\n", kRuns, kStartUpRuns);
    std::printf("start-up   vdhost --no-plugins eval '1'                     %8.3f s\n", bare);
    if (startUp < 0) {
        std::printf("vdhost with the plug-in failed to start\n");
        return 1;
    }
    std::printf("start-up   vdhost eval '1' with Vandrel                     %8.3f s  (the plug-in's load %.3f s; "
                "target <= 0.040 s: %s)\n",
                startUp, startUp - bare, startUp <= 0.040 ? "met" : "missed");
    if (ours < 0) {
        std::printf("Vandrel_CreateSound failed\n");
        return 1;
    }
    std::printf("ours       Vandrel_CreateSound (\"sine\";60;440) --out   %8.3f s  (\"snd \" stream %llu bytes)\n", ours,
                static_cast<unsigned long long>(snd));
    if (sox < 0) {
        std::printf("sox        not available\n");
        return 0;
    }
    std::printf("theirs     sox -n -r 44100 -b 16 -c 2 x.wav synth 60 sine 440  %8.3f s\n", sox);
    std::printf("ratio      %.2f (target <= 1.0)\n", ours / sox);
    return 0;
}
