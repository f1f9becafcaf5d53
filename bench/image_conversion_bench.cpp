// Conversion of a 24-megapixel JPEG (6000 x 4000, ffmpeg's test pattern) through the host, against
// the command-line tools a user would pick instead:
//   to PNG    vdhost eval 'Vandrel_ConvertImage ( "x.jpg" ; "PNGf" )'   vips copy x.jpg t.png   convert x.jpg t.png
//   to TIFF   vdhost eval 'Vandrel_ConvertImage ( "x.jpg" ; "TIFF" )'   vips copy x.jpg t.tif   convert x.jpg t.tif
// Ours answers a container (the picture, its size and the placeholder stream) that vdhost prints and
// throws away; the tools write a file. All are whole runs started from here, start-up included, run
// in turn, each round in another of the six orders (see RunInTurn), so that a busy machine or the
// memory the one before freed slows each alike; medians of 6 after one warm-up each.
// Target: ratio (ours / vips) <= 1.0.
//   image_conversion_bench VDHOST PLUGIN_DIR
#include "timing.h"

#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;
using namespace vdbench;

constexpr int kConversionRuns = 6;  // each of the six orders of the three tools once

struct Target {
    const char* name;
    const char* code;
    const char* extension;
};

}  // namespace

int main(int argc, char** argv) {
    std::string vdhost, plugins;
    if (!ReadHostBenchArguments(argc, argv, vdhost, plugins)) return 2;
    const fs::path folder = MakeBenchFolder("image-bench");
    if (folder.empty()) return 1;
    const std::string jpeg = (folder / "x.jpg").string(), db = (folder / "bench.vddb").string();
    if (Run({"ffmpeg", "-nostdin", "-y", "-f", "lavfi", "-i", "testsrc2=size=6000x4000", "-frames:v", "1", "-q:v", "3",
             jpeg}) < 0) {
        std::fprintf(stderr, "ffmpeg could not make the test picture\n");
        return 1;
    }

    std::printf("%-8s %10s %10s %12s %9s %9s\n", "target", "ours (s)", "vips (s)", "convert (s)", "ours/vips",
                "ours/IM");
    int status = 0;
    for (const Target& target : {Target{"PNG", "PNGf", "png"}, Target{"TIFF", "TIFF", "tif"}}) {
        const std::string theirs = (folder / (std::string("t.") + target.extension)).string();
        const std::vector<std::string> ours{vdhost, "--plugins", plugins, "--db", db, "eval",
                                            std::string("Vandrel_ConvertImage ( \"") + jpeg + "\" ; \"" + target.code + "\" )"};
        const std::vector<std::string> vips{"vips", "copy", jpeg, theirs};
        const std::vector<std::string> magick{"convert", jpeg, theirs};

        bool failed = Run(ours) < 0 || Run(vips) < 0 || Run(magick) < 0;
        std::vector<double> ourTimes, vipsTimes, magickTimes;
        for (int i = 0; i < kConversionRuns && !failed; ++i) {
            const std::vector<double> t = RunInTurn({ours, vips, magick}, i);
            failed |= t[0] < 0 || t[1] < 0 || t[2] < 0;
            ourTimes.push_back(t[0]), vipsTimes.push_back(t[1]), magickTimes.push_back(t[2]);
        }
        if (failed) {
            std::printf("%-8s failed (are libvips-tools and imagemagick installed?)\n", target.name);
            status = 1;
            continue;
        }
        const double ratio = Median(ourTimes) / Median(vipsTimes);
        std::printf("%-8s %10.3f %10.3f %12.3f %9.3f %9.3f\n", target.name, Median(ourTimes), Median(vipsTimes),
                    Median(magickTimes), ratio, Median(ourTimes) / Median(magickTimes));
        if (ratio > 1.0) status = status ? status : 3;
    }
    fs::remove_all(folder);
    return status == 1 ? 1 : 0;
}
