// Conversion of a 10-minute WAV (44100 Hz, 16 bits, stereo: a tone on the left, noise on the right,
// so that the encoders have work to do) through the host, against the ffmpeg command line with the
// same encoder settings:
//   MP3 128 kbit/s     vdhost eval 'Vandrel_ConvertSound ( "x.wav" ; "o.mp3" ; "MP3 " ; <settings> )'
//                      ffmpeg -i x.wav -c:a libmp3lame -b:a 128k t.mp3
//   AAC 128 kbit/s     'M4A '        against  -c:a aac -b:a 128k t.m4a
//   FLAC               'FLAC'        against  -c:a flac t.flac
//   Ogg Vorbis q 4     'Ogg '        against  -c:a libvorbis -q:a 4 t.ogg
// The settings texts come from Vandrel_SoundFormatDialog answered by a UI script, as a user would
// make them once. Both sides are whole runs started from here, the host's start-up and the
// plug-in's load included (and the container result ours makes of the written sound). Runs of the
// two alternate so that a busy machine slows both alike; medians of 5 after one warm-up each.
// Targets: ratio (ours / ffmpeg) <= 1.02, and the files' sizes within 1% of each other.
//   sound_conversion_bench VDHOST PLUGIN_DIR
#include "timing.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <sys/wait.h>

namespace {

namespace fs = std::filesystem;
using namespace vdbench;

constexpr int kConversionRuns = 5;

struct Format {
    const char* name;
    const char* code;
    const char* answer;  // the UI script's answer to the settings dialog
    const char* extension;
    std::vector<std::string> ffmpegCodec;
};

// What a program prints, or "" when it fails.
std::string Output(const std::string& command) {
    std::string text;
    if (FILE* pipe = popen(command.c_str(), "r")) {
        char buffer[4096];
        size_t n;
        while ((n = fread(buffer, 1, sizeof buffer, pipe)) > 0) text.append(buffer, n);
        if (pclose(pipe) != 0) text.clear();
    }
    while (!text.empty() && (text.back() == '\n' || text.back() == '\r')) text.pop_back();
    return text;
}

}  // namespace

int main(int argc, char** argv) {
    std::string vdhost, plugins;
    if (!ReadHostBenchArguments(argc, argv, vdhost, plugins)) return 2;
    const fs::path folder = MakeBenchFolder("convert-bench");
    if (folder.empty()) return 1;
    const std::string wav = (folder / "x.wav").string(), db = (folder / "bench.vddb").string();
    const std::string script = (folder / "answers.txt").string();
    if (Run({"ffmpeg", "-nostdin", "-y", "-f", "lavfi", "-i", "sine=frequency=440:duration=600", "-f", "lavfi", "-i",
             "anoisesrc=duration=600:amplitude=0.2:seed=7", "-filter_complex", "[0][1]amerge=inputs=2", "-ar", "44100",
             "-c:a", "pcm_s16le", wav}) < 0) {
        std::fprintf(stderr, "ffmpeg could not make the test sound\n");
        return 1;
    }
    setenv("VANDREL_UI_SCRIPT", script.c_str(), 1);

    const std::vector<Format> formats{
        {"MP3 128 kbit/s", "MP3 ", "ok bitrate=128000", "mp3", {"-c:a", "libmp3lame", "-b:a", "128k"}},
        {"AAC 128 kbit/s", "M4A ", "ok bitrate=128000", "m4a", {"-c:a", "aac", "-b:a", "128k"}},
        {"FLAC", "FLAC", "ok", "flac", {"-c:a", "flac"}},
        {"Ogg Vorbis quality 4", "Ogg ", "ok quality=4", "ogg", {"-c:a", "libvorbis", "-q:a", "4"}},
    };
    std::printf("%-22s %10s %10s %7s %12s %12s %7s\n", "format", "ours (s)", "ffmpeg (s)", "ratio", "our bytes",
                "its bytes", "size");
    int status = 0;
    for (const Format& format : formats) {
        std::ofstream(script) << format.answer << "\n";
        const std::string settings = Output("'" + vdhost + "' --plugins '" + plugins + "' --db '" + db +
                                            "' eval 'Vandrel_SoundFormatDialog ( \"" + format.code + "\" )'");
        if (settings.rfind("<hex>", 0) != 0) {
            std::fprintf(stderr, "no settings for %s: %s\n", format.name, settings.c_str());
            return 1;
        }
        const std::string ours = (folder / (std::string("o.") + format.extension)).string();
        const std::string theirs = (folder / (std::string("t.") + format.extension)).string();
        const std::vector<std::string> ourRun{vdhost, "--plugins", plugins, "--db", db, "eval",
                                              std::string("Vandrel_ConvertSound ( \"") + wav + "\" ; \"" + ours +
                                                  "\" ; \"" + format.code + "\" ; \"" + settings + "\" )"};
        std::vector<std::string> theirRun{"ffmpeg", "-nostdin", "-y", "-i", wav};
        theirRun.insert(theirRun.end(), format.ffmpegCodec.begin(), format.ffmpegCodec.end());
        theirRun.push_back(theirs);

        bool failed = Run(ourRun) < 0 || Run(theirRun) < 0;
        std::vector<double> ourTimes, theirTimes;
        for (int i = 0; i < kConversionRuns && !failed; ++i) {
            const double a = Run(ourRun), b = Run(theirRun);
            failed |= a < 0 || b < 0;
            ourTimes.push_back(a), theirTimes.push_back(b);
        }
        std::error_code error;
        const auto ourBytes = fs::file_size(ours, error), theirBytes = fs::file_size(theirs, error);
        if (failed || error) {
            std::printf("%-22s failed\n", format.name);
            status = 1;
            continue;
        }
        const double ratio = Median(ourTimes) / Median(theirTimes);
        const double sizeDifference = 100.0 * (double(ourBytes) - double(theirBytes)) / double(theirBytes);
        std::printf("%-22s %10.3f %10.3f %7.3f %12ju %12ju %+6.2f%%\n", format.name, Median(ourTimes),
                    Median(theirTimes), ratio, uintmax_t(ourBytes), uintmax_t(theirBytes), sizeDifference);
        if (ratio > 1.02 || std::fabs(sizeDifference) > 1.0) status = 3;
    }
    fs::remove_all(folder);
    return status == 1 ? 1 : 0;
}
