// Reading every tag of 1,000 camera JPEGs (EXIF with GPS, IPTC with repeated keywords, XMP with
// language alternatives) through vdhost against the two tools a user would pick instead:
//   ours       vdhost run reads.vdcalc    1,000 lines "print Vandrel_GetMetadata ( "photo-0042.jpg" )"
//   exiv2      exiv2 -pa photo-*.jpg      (one process, every file an argument)
//   exiftool   exiftool photo-*.jpg       (one process, every file an argument, without -fast)
// Each prints every tag of every file, thrown away here. Whole runs started from here, start-up
// included, run in turn round after round; medians of 5 rounds after one warm-up round. The CPU
// time (user and system) is shown beside the wall time: other work on a shared machine disturbs it
// less. Target: ours faster than both.
//   metadata_bench VDHOST PLUGIN_DIR
#include "timing.h"

#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;
using namespace vdbench;

constexpr int kFiles = 1000;
constexpr int kRounds = 5;

// Every copy carries its number in its description, so no two files are alike.
constexpr char kDescriptionMark[] = "Frame 0000";

// The tags of one shot as a camera and a cataloguing program would leave them.
const std::vector<std::string> kTagCommands = {
    "set Exif.Image.Make Canon", "set Exif.Image.Model Canon EOS 5D Mark IV", "set Exif.Image.Orientation 1",
    std::string("set Exif.Image.ImageDescription ") + kDescriptionMark, "set Exif.Image.XResolution 300/1",
    "set Exif.Image.YResolution 300/1", "set Exif.Image.ResolutionUnit 2", "set Exif.Image.Software Firmware 1.3.2",
    "set Exif.Image.DateTime 2021:06:01 12:30:00", "set Exif.Image.Artist Jane Roe",
    "set Exif.Image.Copyright (c) 2021 Jane Roe", "set Exif.Photo.ExposureTime 1/250", "set Exif.Photo.FNumber 56/10",
    "set Exif.Photo.ExposureProgram 3", "set Exif.Photo.ISOSpeedRatings 400",
    "set Exif.Photo.DateTimeOriginal 2021:06:01 12:30:00", "set Exif.Photo.DateTimeDigitized 2021:06:01 12:30:00",
    "set Exif.Photo.ExposureBiasValue -1/3", "set Exif.Photo.MeteringMode 5", "set Exif.Photo.Flash 16",
    "set Exif.Photo.FocalLength 50/1", "set Exif.Photo.ColorSpace 1", "set Exif.Photo.PixelXDimension 1600",
    "set Exif.Photo.PixelYDimension 1200", "set Exif.Photo.WhiteBalance 0", "set Exif.Photo.LensModel EF50mm f/1.8 STM",
    "set Exif.GPSInfo.GPSVersionID 2 3 0 0", "set Exif.GPSInfo.GPSLatitudeRef N",
    "set Exif.GPSInfo.GPSLatitude 48/1 51/1 2400/100", "set Exif.GPSInfo.GPSLongitudeRef E",
    "set Exif.GPSInfo.GPSLongitude 2/1 21/1 300/100", "set Exif.GPSInfo.GPSAltitude 35/1",
    "add Iptc.Application2.Keywords Paris", "add Iptc.Application2.Keywords river",
    "add Iptc.Application2.Keywords summer", "set Iptc.Application2.Caption Evening on the Seine",
    "set Iptc.Application2.Byline Jane Roe", "set Iptc.Application2.City Paris",
    "set Iptc.Application2.CountryName France", "set Iptc.Application2.Copyright (c) 2021 Jane Roe",
    "set Xmp.dc.title lang=x-default Evening on the Seine", "set Xmp.dc.creator Jane Roe",
    "set Xmp.dc.description lang=x-default Boats at dusk", "set Xmp.xmp.Rating 4", "set Xmp.photoshop.City Paris",
    "set Xmp.xmp.CreatorTool Vandrel bench"};

// A 1600 x 1200 JPEG (ffmpeg's test pattern, about 100 KB) with the tags above.
bool MakeTaggedPicture(const std::string& path) {
    if (Run({"ffmpeg", "-nostdin", "-y", "-f", "lavfi", "-i", "testsrc2=size=1600x1200", "-frames:v", "1", "-q:v", "4",
             path}) < 0)
        return false;
    std::vector<std::string> exiv2{"exiv2"};
    for (const std::string& command : kTagCommands) exiv2.push_back("-M" + command);
    exiv2.push_back(path);
    return Run(exiv2) >= 0;
}

// kFiles copies of the picture, each with its own description; their paths.
std::vector<std::string> MakeCopies(const std::string& original, const fs::path& folder) {
    std::ifstream in(original, std::ios::binary);
    const std::string bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    const size_t mark = bytes.find(kDescriptionMark);
    if (mark == std::string::npos) return {};
    std::vector<std::string> paths;
    for (int i = 0; i < kFiles; ++i) {
        std::string copy = bytes;
        char number[16];
        std::snprintf(number, sizeof number, "%04d", i);
        copy.replace(mark + std::strlen(kDescriptionMark) - 4, 4, number);
        char name[32];
        std::snprintf(name, sizeof name, "photo-%04d.jpg", i);
        paths.push_back((folder / name).string());
        std::ofstream out(paths.back(), std::ios::binary);
        if (!(out << copy)) return {};
    }
    return paths;
}

bool WriteScript(const std::string& script, const std::vector<std::string>& paths) {
    std::ofstream out(script);
    for (const std::string& path : paths) out << "print Vandrel_GetMetadata ( \"" << path << "\" )\n";
    return bool(out.flush());
}

// What a program prints, or "" when it fails.
std::string Output(const std::string& command) {
    std::string text;
    if (FILE* pipe = popen(command.c_str(), "r")) {
        char buffer[4096];
        size_t n;
        while ((n = fread(buffer, 1, sizeof buffer, pipe)) > 0) text.append(buffer, n);
        if (pclose(pipe) != 0) text.clear();
    }
    return text;
}

struct Timings {
    std::vector<double> wall, cpu;
    bool Add(const std::vector<std::string>& args) {
        double seconds = 0;
        const double t = Run(args, nullptr, &seconds);
        wall.push_back(t), cpu.push_back(seconds);
        return t >= 0;
    }
};

}  // namespace

int main(int argc, char** argv) {
    std::string vdhost, plugins;
    if (!ReadHostBenchArguments(argc, argv, vdhost, plugins)) return 2;
    const fs::path folder = MakeBenchFolder("metadata-bench");
    if (folder.empty()) return 1;
    const std::string original = (folder / "original.jpg").string(), db = (folder / "bench.vddb").string();
    const std::string script = (folder / "reads.vdcalc").string();
    const auto fail = [&](const char* why) {
        fs::remove_all(folder);
        std::fprintf(stderr, "%s\n", why);
        return 1;
    };
    if (!MakeTaggedPicture(original)) return fail("ffmpeg or exiv2 could not make the tagged picture");
    const std::vector<std::string> paths = MakeCopies(original, folder);
    if (paths.empty() || !WriteScript(script, paths)) return fail("could not write the copies of the picture");

    // Ours must read what the tools read, or the race means nothing.
    const std::string report = Output("'" + vdhost + "' --plugins '" + plugins + "' --db '" + db +
                                      "' eval 'Vandrel_GetMetadata ( \"" + paths.back() + "\" )'");
    for (const char* expected : {"Model: Canon EOS 5D Mark IV", "Keywords: Paris; river; summer", "Frame 0999",
                                 "dc.title: Evening on the Seine", "GPSLatitude: 48deg 51' 24\""})
        if (report.find(expected) == std::string::npos) return fail("vdhost's report lacks a tag of the picture");

    const std::vector<std::string> ours{vdhost, "--plugins", plugins, "--db", db, "run", script};
    std::vector<std::string> exiv2{"exiv2", "-pa"}, exiftool{"exiftool"};
    exiv2.insert(exiv2.end(), paths.begin(), paths.end());
    exiftool.insert(exiftool.end(), paths.begin(), paths.end());

    bool failed = Run(ours) < 0 || Run(exiv2) < 0 || Run(exiftool) < 0;
    Timings ourTimes, exiv2Times, exiftoolTimes;
    for (int i = 0; i < kRounds && !failed; ++i)
        failed = !ourTimes.Add(ours) || !exiv2Times.Add(exiv2) || !exiftoolTimes.Add(exiftool);
    fs::remove_all(folder);
    if (failed) {
        std::printf("failed (are exiv2 and libimage-exiftool-perl installed?)\n");
        return 1;
    }
    const double ourWall = Median(ourTimes.wall), ourCpu = Median(ourTimes.cpu);
    std::printf("%-10s %10s %10s %12s %12s\n", "1000 JPEGs", "wall (s)", "cpu (s)", "ours/tool", "cpu ratio");
    std::printf("%-10s %10.3f %10.3f\n", "vdhost", ourWall, ourCpu);
    bool won = true;
    for (const auto& [name, times] : {std::pair<const char*, const Timings*>{"exiv2 -pa", &exiv2Times},
                                      std::pair<const char*, const Timings*>{"exiftool", &exiftoolTimes}}) {
        const double wall = Median(times->wall), cpu = Median(times->cpu);
        std::printf("%-10s %10.3f %10.3f %12.3f %12.3f\n", name, wall, cpu, ourWall / wall, ourCpu / cpu);
        won &= ourWall < wall;
    }
    std::printf("target: vdhost faster than both: %s\n", won ? "ok" : "NOT MET");
    return 0;
}
