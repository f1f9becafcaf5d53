// The six sound-editing functions on a 10-minute WAV (44100 Hz, 16 bits, stereo; two of them for
// appending and mixing) through the host, against the sox and ffmpeg commands a user would run:
//   Vandrel_Amplify ( a ; 2 )                sox a o vol 2              ffmpeg -af volume=2
//   Vandrel_Normalize ( a )                  sox a o norm               (no one-pass peak normalize)
//   Vandrel_AppendSound ( a ; b )            sox a b o                  ffmpeg concat filter
//   Vandrel_MixSounds ( a ; b )              sox -m a b o               ffmpeg amix
//   Vandrel_ExtractSound ( a ; 60 ; 540 )    sox a o trim 60 =540       ffmpeg -ss 60 -to 540
//   Vandrel_FadeSound ( a ; 0 ; 600 ; 1 ; 0 ) sox a o fade t 0 600 600  ffmpeg afade out
// Whole program runs, as a script would start them; ours writes its result with --out. Medians of
// the runs, the ratio is ours / theirs (target <= 1.0 of the faster tool); the same for the CPU time
// (user + system), which other work on a shared machine disturbs less. Peak memory (resident) of
// ours and of the faster tool is set against the PCM size of the input(s) (target <= 1.0).
//   sound_editing_bench VDHOST PLUGIN_DIR
#include "timing.h"

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <stdlib.h>

namespace fs = std::filesystem;
using namespace vdbench;

namespace {

constexpr int kRate = 44100;
constexpr int kSeconds = 600;

void PutLe(std::string& s, uint32_t v, int bytes) {
    for (int i = 0; i < bytes; ++i) s.push_back(char(v >> (8 * i)));
}

// A stereo sine of the frequency at half scale, written in one-second blocks.
bool WriteSineWav(const fs::path& path, double frequency) {
    std::ofstream out(path, std::ios::binary);
    const uint32_t dataSize = uint32_t(kRate) * kSeconds * 4;
    std::string header = "RIFF";
    PutLe(header, 36 + dataSize, 4);
    header += "WAVEfmt ";
    PutLe(header, 16, 4), PutLe(header, 1, 2), PutLe(header, 2, 2), PutLe(header, kRate, 4);
    PutLe(header, kRate * 4, 4), PutLe(header, 4, 2), PutLe(header, 16, 2);
    header += "data";
    PutLe(header, dataSize, 4);
    out << header;
    std::string block;
    for (int64_t n = 0; n < int64_t(kRate) * kSeconds; ++n) {
        const auto v = uint16_t(int16_t(std::lround(16000 * std::sin(2 * M_PI * frequency * double(n) / kRate))));
        PutLe(block, v, 2), PutLe(block, v, 2);
        if (block.size() >= size_t(kRate) * 4) out << block, block.clear();
    }
    out << block;
    return bool(out);
}

struct Measure {
    double seconds = -1;
    double cpuSeconds = -1;
    long peakKilobytes = 0;
};

// Median time and the largest peak memory of the runs; seconds negative when a run failed.
Measure MedianRun(const std::vector<std::string>& args) {
    Measure m;
    if (Run(args) < 0) return m;
    std::vector<double> times, cpuTimes;
    for (int i = 0; i < kRuns; ++i) {
        long peak = 0;
        double cpu = 0;
        const double t = Run(args, &peak, &cpu);
        if (t < 0) return m;
        times.push_back(t);
        cpuTimes.push_back(cpu);
        m.peakKilobytes = std::max(m.peakKilobytes, peak);
    }
    m.seconds = Median(times);
    m.cpuSeconds = Median(cpuTimes);
    return m;
}

struct Job {
    const char* name;
    std::string calculation;
    int inputs;  // how many of the 10-minute sounds it reads
    std::vector<std::string> sox, ffmpeg;
};

}  // namespace

int main(int argc, char** argv) {
    std::string vdhost, plugins;
    if (!ReadHostBenchArguments(argc, argv, vdhost, plugins)) return 2;
    const fs::path folder = MakeBenchFolder("edit-bench");
    if (folder.empty()) return 1;
    const std::string a = (folder / "a.wav").string(), b = (folder / "b.wav").string();
    const std::string out = (folder / "o.wav").string(), db = (folder / "bench.vddb").string();
    if (!WriteSineWav(a, 440) || !WriteSineWav(b, 660)) {
        std::printf("could not write the input WAV files\n");
        return 1;
    }
    const double pcmMegabytes = double(fs::file_size(a) - 44) / 1e6;
    const std::vector<std::string> ff{"ffmpeg", "-nostdin", "-y", "-v", "error"};
    auto with = [](std::vector<std::string> head, std::vector<std::string> tail) {
        head.insert(head.end(), tail.begin(), tail.end());
        return head;
    };
    const std::string qa = "\"" + a + "\"", qb = "\"" + b + "\"";
    const std::vector<Job> jobs{
        {"amplify", "Vandrel_Amplify ( " + qa + " ; 2 )", 1, {"sox", a, out, "vol", "2"},
         with(ff, {"-i", a, "-af", "volume=2", out})},
        {"normalize", "Vandrel_Normalize ( " + qa + " )", 1, {"sox", a, out, "norm"}, {}},
        {"append", "Vandrel_AppendSound ( " + qa + " ; " + qb + " )", 2, {"sox", a, b, out},
         with(ff, {"-i", a, "-i", b, "-filter_complex", "concat=n=2:v=0:a=1", out})},
        {"mix", "Vandrel_MixSounds ( " + qa + " ; " + qb + " )", 2, {"sox", "-m", a, b, out},
         with(ff, {"-i", a, "-i", b, "-filter_complex", "amix=inputs=2", out})},
        {"extract", "Vandrel_ExtractSound ( " + qa + " ; 60 ; 540 )", 1, {"sox", a, out, "trim", "60", "=540"},
         with(ff, {"-ss", "60", "-to", "540", "-i", a, out})},
        {"fade", "Vandrel_FadeSound ( " + qa + " ; 0 ; 600 ; 1 ; 0 )", 1, {"sox", a, out, "fade", "t", "0", "600", "600"},
         with(ff, {"-i", a, "-af", "afade=t=out:st=0:d=600", out})},
    };

    std::printf("input      two 10-minute WAV files, 44100 Hz, 16 bits, stereo (%.1f MB of PCM each)\n", pcmMegabytes);
    std::printf("runs       median of %d after one warm-up; ours writes its result with --out\n\n", kRuns);
    std::printf("%-10s %8s %8s %8s %10s %10s %10s %8s %8s %9s %9s %9s\n", "function", "ours s", "sox s", "ffmpeg s",
                "vs sox", "vs ffmpeg", "vs faster", "ours cpu", "cpu vs", "memory", "theirs", "mem vs");
    bool allRan = true;
    for (const Job& job : jobs) {
        const Measure ours = MedianRun({vdhost, "--plugins", plugins, "--db", db, "--out",
                                        (folder / "x.snd").string(), "eval", job.calculation});
        const Measure sox = MedianRun(job.sox);
        const Measure ffmpeg = job.ffmpeg.empty() ? Measure{} : MedianRun(job.ffmpeg);
        if (ours.seconds < 0) {
            std::printf("%-10s failed: %s\n", job.name, job.calculation.c_str());
            allRan = false;
            continue;
        }
        const Measure* faster = nullptr;
        for (const Measure* m : {&sox, &ffmpeg})
            if (m->seconds > 0 && (!faster || m->seconds < faster->seconds)) faster = m;
        auto ratio = [&](double theirs) { return theirs > 0 ? ours.seconds / theirs : NAN; };
        const double inputMegabytes = pcmMegabytes * job.inputs;
        auto memoryOf = [&](const Measure& m) { return double(m.peakKilobytes) * 1024 / 1e6 / inputMegabytes; };
        const double theirMemory = faster ? memoryOf(*faster) : NAN;
        std::printf("%-10s %8.3f %8.3f %8.3f %10.2f %10.2f %10.2f %8.3f %8.2f %8.2fx %8.2fx %9.2f\n", job.name,
                    ours.seconds, sox.seconds, ffmpeg.seconds, ratio(sox.seconds), ratio(ffmpeg.seconds),
                    faster ? ratio(faster->seconds) : NAN, ours.cpuSeconds,
                    faster ? ours.cpuSeconds / faster->cpuSeconds : NAN, memoryOf(ours), theirMemory,
                    memoryOf(ours) / theirMemory);
    }
    std::printf("\ntargets    time <= 1.0 of the faster tool; peak memory <= 1.0 x the PCM size of the input(s)\n");
    std::error_code ec;
    fs::remove_all(folder, ec);
    return allRan ? 0 : 1;
}
