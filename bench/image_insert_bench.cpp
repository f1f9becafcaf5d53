// Embedding a 24-megapixel picture (6000 x 4000, ffmpeg's test pattern) with its VD preview through
// the host, against vipsthumbnail making the same preview: a JPEG of the whole picture at the
// preview quality (512 of 1024, about JPEG quality 50).
//   ours     vdhost eval 'Vandrel_InsertImage ( "x.png" ; 0 )'       (PNGf, SIZE and the JPEG preview)
//   theirs   vipsthumbnail x.png --size 6000x4000 -o t.jpg[Q=50]
// The picture is a PNG because a JPEG is embedded without a preview (the host shows it itself).
// Ours answers a container that vdhost prints and throws away; vipsthumbnail writes a file. Both are
// whole runs started from here, start-up included, run in turn, each round starting with the other (see RunInTurn); medians of 5 after one warm-up each.
// Target: ratio (ours / vipsthumbnail) <= 1.0.
//   image_insert_bench VDHOST PLUGIN_DIR
#include "timing.h"

#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;
using namespace vdbench;

constexpr int kInsertRuns = 5;

}  // namespace

int main(int argc, char** argv) {
    std::string vdhost, plugins;
    if (!ReadHostBenchArguments(argc, argv, vdhost, plugins)) return 2;
    const fs::path folder = MakeBenchFolder("image-insert-bench");
    if (folder.empty()) return 1;
    const std::string png = (folder / "x.png").string(), db = (folder / "bench.vddb").string();
    if (Run({"ffmpeg", "-nostdin", "-y", "-f", "lavfi", "-i", "testsrc2=size=6000x4000", "-frames:v", "1", png}) < 0) {
        std::fprintf(stderr, "ffmpeg could not make the test picture\n");
        return 1;
    }

    const std::vector<std::string> ours{vdhost, "--plugins", plugins, "--db", db, "eval",
                                        "Vandrel_InsertImage ( \"" + png + "\" ; 0 )"};
    const std::vector<std::string> vips{"vipsthumbnail", png, "--size", "6000x4000", "-o",
                                        (folder / "t.jpg").string() + "[Q=50]"};

    bool failed = Run(ours) < 0 || Run(vips) < 0;
    std::vector<double> ourTimes, vipsTimes;
    for (int i = 0; i < kInsertRuns && !failed; ++i) {
        const std::vector<double> t = RunInTurn({ours, vips}, i);
        failed |= t[0] < 0 || t[1] < 0;
        ourTimes.push_back(t[0]), vipsTimes.push_back(t[1]);
    }
    fs::remove_all(folder);
    if (failed) {
        std::printf("failed (is libvips-tools installed?)\n");
        return 1;
    }
    const double ratio = Median(ourTimes) / Median(vipsTimes);
    std::printf("%-12s %10s %18s %12s\n", "picture", "ours (s)", "vipsthumbnail (s)", "ours/vips");
    std::printf("%-12s %10.3f %18.3f %12.3f\n", "6000x4000", Median(ourTimes), Median(vipsTimes), ratio);
    return 0;
}
