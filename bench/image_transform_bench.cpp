// Transforms of a 24-megapixel JPEG (6000 x 4000, ffmpeg's test pattern) through the host, against
// the command-line tools a user would pick instead, each drawing the same transform with bilinear
// resampling into a picture as large as the transformed picture's bounds:
//   scale 50%      Vandrel_TScale ( 0.5 ; 0.5 )     vips affine x.jpg t.tif "0.5 0 0 0.5"     convert x.jpg +distort SRT 0.5,0 t.tif
//   rotate 30°     Vandrel_TRotate ( 30 )           vips similarity x.jpg t.tif --angle 30   convert x.jpg +distort SRT 30 t.tif
//   affine skew    Vandrel_TSkew ( 0.3 ; 0 )        vips affine x.jpg t.tif "1 0.3 0 1"       convert x.jpg +distort AffineProjection ... t.tif
//   perspective    Vandrel_TQuad ( 100 ; 10 ; 0 ; 90 ; 0 ; 100 ; 100 ; 0 ; 100 )
//                                                   vips mapim x.jpg t.tif map.v (the map prebuilt, untimed)
//                                                   convert x.jpg +distort Perspective ... t.tif
// Ours answers a VD image (a 24-bit PICT in memory and its JPEG preview at the preview quality,
// about JPEG quality 50) that vdhost prints and throws away. vips writes the same: an uncompressed
// TIFF, the cheapest file it has that is like the picture, then its JPEG preview
// (vips jpegsave t.tif p.jpg --Q 50, a second run, as a user of the tool would do it);
// ImageMagick writes the TIFF only.
// All are whole runs started from here, start-up included, run in turn, each round starting with the next tool, so that a busy machine slows
// each alike; medians of 5 after one warm-up each. Target: ratio (ours / vips) <= 1.0.
//   image_transform_bench VDHOST PLUGIN_DIR
#include "timing.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;
using namespace vdbench;

constexpr int kTransformRuns = 5;
constexpr int kWidth = 6000, kHeight = 4000;

struct Transform {
    const char* name;
    std::string calls;                  // ours, before Vandrel_TApply
    std::vector<std::string> vips;      // the arguments after "vips", before the output
    std::vector<std::string> magick;    // the arguments after the input, before the output
};

using Matrix = double[3][3];

// The inverse of the perspective that takes the picture's corners to the quad's: for each pixel of
// the drawing, where it comes from (points as row vectors, as the plug-in's matrices take them).
// The quad moves the top corners in by a tenth of the width and keeps the bottom ones, so the
// drawing is as large as the picture and the map needs no offset.
void PerspectiveMap(Matrix inverse) {
    // The square-to-quad mapping of the trapezoid, unit square (u, v) to pixels, worked out as
    // x = (a u + b v + c) / (g u + h v + 1), y = (d u + e v + f) / (g u + h v + 1).
    const double w = kWidth, h = kHeight, x0 = 0.1 * w, x1 = 0.9 * w;
    const double sx = x0 - x1 + w - 0, dx1 = x1 - w, dx2 = 0 - w, dy1 = 0 - h, dy2 = 0;
    const double det = dx1 * dy2 - dx2 * dy1;
    const double g = (sx * dy2 - dx2 * 0) / det, hh = (dx1 * 0 - sx * dy1) / det;
    const Matrix toQuad = {{x1 - x0 + g * x1, 0, g}, {0 - x0 + hh * 0, h + hh * h, hh}, {x0, 0, 1}};
    // Picture pixels to the unit square: divide by the size; then toQuad.
    Matrix forward;
    for (int j = 0; j < 3; ++j) {
        forward[0][j] = toQuad[0][j] / w;
        forward[1][j] = toQuad[1][j] / h;
        forward[2][j] = toQuad[2][j];
    }
    const auto& m = forward;
    const double d = m[0][0] * (m[1][1] * m[2][2] - m[1][2] * m[2][1]) - m[0][1] * (m[1][0] * m[2][2] - m[1][2] * m[2][0]) +
                     m[0][2] * (m[1][0] * m[2][1] - m[1][1] * m[2][0]);
    inverse[0][0] = (m[1][1] * m[2][2] - m[1][2] * m[2][1]) / d;
    inverse[0][1] = (m[0][2] * m[2][1] - m[0][1] * m[2][2]) / d;
    inverse[0][2] = (m[0][1] * m[1][2] - m[0][2] * m[1][1]) / d;
    inverse[1][0] = (m[1][2] * m[2][0] - m[1][0] * m[2][2]) / d;
    inverse[1][1] = (m[0][0] * m[2][2] - m[0][2] * m[2][0]) / d;
    inverse[1][2] = (m[0][2] * m[1][0] - m[0][0] * m[1][2]) / d;
    inverse[2][0] = (m[1][0] * m[2][1] - m[1][1] * m[2][0]) / d;
    inverse[2][1] = (m[0][1] * m[2][0] - m[0][0] * m[2][1]) / d;
    inverse[2][2] = (m[0][0] * m[1][1] - m[0][1] * m[1][0]) / d;
}

// The map vips mapim reads: (x y 1) of every pixel of the drawing through the inverse, divided by w.
bool BuildPerspectiveMap(const fs::path& folder, std::string& map) {
    Matrix k;
    PerspectiveMap(k);
    const fs::path matrix = folder / "inverse.mat";
    {
        std::ofstream out(matrix);
        out << "3 3\n";  // recomb's rows are its output bands: band j = sum of row j times (x, y, 1)
        for (int j = 0; j < 3; ++j) out << k[0][j] << ' ' << k[1][j] << ' ' << k[2][j] << '\n';
        if (!out) return false;
    }
    const auto at = [&](const char* name) { return (folder / name).string(); };
    map = at("map.v");
    const std::vector<std::vector<std::string>> steps{
        {"vips", "xyz", at("xy.v"), std::to_string(kWidth), std::to_string(kHeight)},
        {"vips", "bandjoin_const", at("xy.v"), at("xy1.v"), "1"},
        {"vips", "recomb", at("xy1.v"), at("uvw.v"), matrix.string()},
        {"vips", "extract_band", at("uvw.v"), at("uv.v"), "0", "--n", "2"},
        {"vips", "extract_band", at("uvw.v"), at("w.v"), "2"},
        {"vips", "divide", at("uv.v"), at("w.v"), map},
    };
    for (const auto& step : steps)
        if (Run(step) < 0) return false;
    return true;
}

}  // namespace

int main(int argc, char** argv) {
    std::string vdhost, plugins;
    if (!ReadHostBenchArguments(argc, argv, vdhost, plugins)) return 2;
    const fs::path folder = MakeBenchFolder("image-transform-bench");
    if (folder.empty()) return 1;
    const std::string jpeg = (folder / "x.jpg").string(), db = (folder / "bench.vddb").string();
    const std::string theirs = (folder / "t.tif").string(), preview = (folder / "p.jpg").string();
    if (Run({"ffmpeg", "-nostdin", "-y", "-f", "lavfi", "-i", "testsrc2=size=6000x4000", "-frames:v", "1", "-q:v", "3",
             jpeg}) < 0) {
        std::fprintf(stderr, "ffmpeg could not make the test picture\n");
        return 1;
    }
    std::string map;
    if (!BuildPerspectiveMap(folder, map)) {
        std::fprintf(stderr, "vips could not build the perspective map (is libvips-tools installed?)\n");
        return 1;
    }

    const std::vector<Transform> transforms{
        {"scale", "s = Vandrel_TScale ( 0.5 ; 0.5 )", {"affine", jpeg, theirs, "0.5 0 0 0.5"}, {"+distort", "SRT", "0.5,0"}},
        {"rotate", "s = Vandrel_TRotate ( 30 )", {"similarity", jpeg, theirs, "--angle", "30"}, {"+distort", "SRT", "30"}},
        {"skew", "s = Vandrel_TSkew ( 0.3 ; 0 )", {"affine", jpeg, theirs, "1 0.3 0 1"},
         {"+distort", "AffineProjection", "1,0,0.3,1,0,0"}},
        {"quad", "s = Vandrel_TQuad ( 100 ; 10 ; 0 ; 90 ; 0 ; 100 ; 100 ; 0 ; 100 )", {"mapim", jpeg, theirs, map},
         {"+distort", "Perspective", "0,0 600,0  6000,0 5400,0  6000,4000 6000,4000  0,4000 0,4000"}},
    };

    std::printf("%-8s %10s %10s %12s %9s %9s\n", "job", "ours (s)", "vips (s)", "convert (s)", "ours/vips", "ours/IM");
    int status = 0;
    for (const Transform& t : transforms) {
        const std::vector<std::string> ours{vdhost, "--plugins", plugins, "--db", db, "eval",
                                            "Let ( [ c = Vandrel_TClear ; " + t.calls + " ] ; Vandrel_TApply ( \"" + jpeg +
                                                "\" ) )"};
        std::vector<std::string> vips{"vips"};
        vips.insert(vips.end(), t.vips.begin(), t.vips.end());
        std::vector<std::string> magick{"convert", jpeg};
        magick.insert(magick.end(), t.magick.begin(), t.magick.end());
        magick.push_back(theirs);

        const std::vector<std::string> vipsPreview{"vips", "jpegsave", theirs, preview, "--Q", "50"};
        const auto runVips = [&] {
            const double picture = Run(vips);
            const double previewTime = picture < 0 ? -1 : Run(vipsPreview);
            return previewTime < 0 ? -1 : picture + previewTime;
        };
        bool failed = Run(ours) < 0 || runVips() < 0 || Run(magick) < 0;
        std::vector<double> ourTimes, vipsTimes, magickTimes;
        for (int i = 0; i < kTransformRuns && !failed; ++i) {
            // In turn, each round starting with the next tool.
            double a = 0, b = 0, c = 0;
            for (int k = 0; k < 3; ++k) {
                const int which = (i + k) % 3;
                if (which == 0) a = Run(ours);
                else if (which == 1) b = runVips();
                else c = Run(magick);
            }
            failed |= a < 0 || b < 0 || c < 0;
            ourTimes.push_back(a), vipsTimes.push_back(b), magickTimes.push_back(c);
        }
        if (failed) {
            std::printf("%-8s failed (are libvips-tools and imagemagick installed?)\n", t.name);
            status = 1;
            continue;
        }
        const double ratio = Median(ourTimes) / Median(vipsTimes);
        std::printf("%-8s %10.3f %10.3f %12.3f %9.3f %9.3f\n", t.name, Median(ourTimes), Median(vipsTimes),
                    Median(magickTimes), ratio, Median(ourTimes) / Median(magickTimes));
        if (ratio > 1.0) status = status ? status : 3;
    }
    fs::remove_all(folder);
    return status == 1 ? 1 : 0;
}
