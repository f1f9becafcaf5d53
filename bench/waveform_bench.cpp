// A 1800 x 280 waveform picture of a 10-minute WAV (44100 Hz, 16 bits, stereo) through the host,
// against the tool a user would pick instead:
//   ffmpeg -i x.wav -filter_complex showwavespic=s=1800x280 -frames:v 1 out.png  (target: ratio <= 0.2)
// Ours is measured twice:
//   whole runs   vdhost --out x.jpg eval 'Vandrel_DrawWaveform ( "x.wav" ; "1" ; 1800 ; 280 ; "" ; "" )',
//                started from here as a script would start it: the host's start-up and the plug-in's
//                load are included (the host's bare start-up is shown beside it);
//   in-process   the same calculation in one vdhost::Session with the plug-in loaded: the first call
//                (which also loads and starts libvips; the plain WAV needs no FFmpeg) and the median of the
//                calls after it.
// ffmpeg is always a whole run. The runs of the two tools alternate, so that a busy machine slows
// both alike; medians after one warm-up (the file is then in the page cache for both); the ratio
// is ours / theirs.
//   waveform_bench VDHOST PLUGIN_DIR
#include <api/values.h>
#include <session/session.h>

#include "timing.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <spawn.h>
#include <stdlib.h>
#include <sys/wait.h>
#include <unistd.h>


namespace {

namespace fs = std::filesystem;
using namespace vdbench;
// Medians of a and b, their runs alternating; negative for a side whose run failed.
std::pair<double, double> AlternatingMedians(const std::function<double()>& a, const std::function<double()>& b) {
    bool aFailed = a() < 0, bFailed = b() < 0;
    std::vector<double> as, bs;
    for (int i = 0; i < kRuns; ++i) {
        const double ta = a(), tb = b();
        aFailed |= ta < 0, bFailed |= tb < 0;
        as.push_back(ta), bs.push_back(tb);
    }
    return {aFailed ? -1 : Median(as), bFailed ? -1 : Median(bs)};
}

void Line(const char* what, double seconds) { std::printf("%-56s %8.3f s\n", what, seconds); }

double Seconds(Clock::time_point since) { return std::chrono::duration<double>(Clock::now() - since).count(); }

// One Vandrel_DrawWaveform in the session; negative when it did not answer a picture.
double DrawInSession(vdhost::Session& session, const std::string& wav) {
    vdhost::calc::Variables locals;
    locals.set(u"$p", vdhost::makeTextUtf8(wav));
    const auto start = Clock::now();
    FMX_Data result = session.evaluate(u"Vandrel_DrawWaveform ( $p ; \"1\" ; 1800 ; 280 ; \"\" ; \"\" )", locals);
    const double seconds = Seconds(start);
    return vdhost::isContainer(result) && !result.binary.streams.empty() ? seconds : -1;
}

}  // namespace

int main(int argc, char** argv) {
    std::string vdhost, plugins;
    if (!ReadHostBenchArguments(argc, argv, vdhost, plugins)) return 2;
    const fs::path folder = MakeBenchFolder("wave-bench");
    if (folder.empty()) return 1;
    const std::string wav = (folder / "x.wav").string(), db = (folder / "bench.vddb").string();
    const std::string jpeg = (folder / "x.jpg").string(), png = (folder / "out.png").string();

    int status = 0;
    if (Run({"ffmpeg", "-nostdin", "-y", "-f", "lavfi", "-i",
             "sine=frequency=440:duration=600,aformat=channel_layouts=stereo", "-ar", "44100", "-c:a", "pcm_s16le",
             wav}) < 0) {
        std::printf("ffmpeg could not make the 10-minute WAV: ffmpeg is needed for this benchmark\n");
        status = 1;
    } else {
        const double startUp = MedianOf({vdhost, "--plugins", plugins, "--db", db, "eval", "1"});
        const std::vector<std::string> ffmpeg{"ffmpeg", "-nostdin", "-y", "-i", wav, "-filter_complex",
                                              "showwavespic=s=1800x280", "-frames:v", "1", png};
        const auto [ours, theirs] = AlternatingMedians(
            [&] {
                return Run({vdhost, "--plugins", plugins, "--db", db, "--out", jpeg, "eval",
                            "Vandrel_DrawWaveform ( \"" + wav + "\" ; \"1\" ; 1800 ; 280 ; \"\" ; \"\" )"});
            },
            [&] { return Run(ffmpeg); });
        const auto jpegSize = fs::exists(jpeg) ? fs::file_size(jpeg) : 0;

        vdhost::SessionOptions options;
        options.database = folder / "session.vddb";
        options.pluginFolders = {plugins};
        double first = -1, inProcess = -1, theirsBeside = -1;
        {
            vdhost::Session session(options);
            first = DrawInSession(session, wav);
            std::tie(inProcess, theirsBeside) =
                AlternatingMedians([&] { return DrawInSession(session, wav); }, [&] { return Run(ffmpeg); });
        }
        std::printf("input      10-minute WAV, 44100 Hz, 16 bits, stereo (%llu bytes)\n",
                    static_cast<unsigned long long>(fs::file_size(wav)));
        std::printf("runs       median of %d after one warm-up; ours and ffmpeg alternate\n", kRuns);
        std::printf("ours       vdhost eval 'Vandrel_DrawWaveform ( x.wav ; \"1\" ; 1800 ; 280 ; \"\" ; \"\" )'"
                    " --out x.jpg\n");
        std::printf("theirs     ffmpeg -i x.wav -filter_complex showwavespic=s=1800x280 -frames:v 1 out.png\n\n");
        Line("host start-up alone (vdhost eval '1')", startUp);
        if (ours < 0 || jpegSize == 0 || first < 0 || inProcess < 0) {
            std::printf("Vandrel_DrawWaveform failed\n");
            status = 1;
        } else if (theirs < 0 || theirsBeside < 0) {
            std::printf("ffmpeg showwavespic not available\n");
        } else {
            std::printf("JPEG of %llu bytes\n", static_cast<unsigned long long>(jpegSize));
            Line("whole runs: ours", ours);
            Line("whole runs: theirs", theirs);
            std::printf("whole runs: ratio %.3f (target <= 0.2)\n", ours / theirs);
            Line("in-process: first call (loads libvips)", first);
            Line("in-process: later calls", inProcess);
            Line("theirs, alternating with the in-process calls", theirsBeside);
            std::printf("in-process: ratio %.3f, first call %.3f (target <= 0.2)\n", inProcess / theirsBeside,
                        first / theirsBeside);
        }
    }
    std::error_code ec;
    fs::remove_all(folder, ec);
    return status;
}
