// CPU time of the sound output mixing 100 sounds at once: 100 stereo 44.1 kHz WAV sounds of 10 s
// each, played together on the virtual device as fast as it goes (frames discarded), measured as
// the process's user + system time per second of sound, in percent of one core.
#include "platform/audio/playing_sound.h"
#include "platform/media/movie_from_file.h"

#include <sys/resource.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <thread>
#include <vector>

namespace {

constexpr int kSounds = 100;
constexpr int kSeconds = 10;
constexpr int kRate = 44100;
constexpr int kRuns = 3;

double CpuSeconds() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return double(usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) +
           double(usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1e6;
}

void PutLe(std::ofstream& out, uint32_t value, int bytes) {
    for (int i = 0; i < bytes; ++i) out.put(char(value >> (8 * i)));
}

void WriteSine(const std::string& path, double frequency) {
    const uint32_t frames = kSeconds * kRate, bytes = frames * 4;
    std::ofstream out(path, std::ios::binary);
    out << "RIFF";
    PutLe(out, 36 + bytes, 4);
    out << "WAVEfmt ";
    PutLe(out, 16, 4), PutLe(out, 1, 2), PutLe(out, 2, 2), PutLe(out, kRate, 4), PutLe(out, kRate * 4, 4);
    PutLe(out, 4, 2), PutLe(out, 16, 2);
    out << "data";
    PutLe(out, bytes, 4);
    for (uint32_t n = 0; n < frames; ++n) {
        const auto v = uint16_t(int16_t(std::lround(8000 * std::sin(2 * 3.141592653589793 * frequency * n / kRate))));
        PutLe(out, v, 2), PutLe(out, v, 2);
    }
}

}  // namespace

int main() {
    using namespace vd;
    setenv("VANDREL_AUDIO", "virtual:speed=fast", 1);
    const auto folder = std::filesystem::temp_directory_path() / ("audio_mix_bench." + std::to_string(getpid()));
    std::filesystem::create_directories(folder);
    std::vector<std::string> paths;
    for (int i = 0; i < 10; ++i) {
        paths.push_back((folder / ("sine" + std::to_string(i) + ".wav")).string());
        WriteSine(paths.back(), 220 + 55 * i);
    }

    std::vector<double> percents;
    for (int run = 0; run < kRuns; ++run) {
        const double cpuBefore = CpuSeconds();
        const auto wallBefore = std::chrono::steady_clock::now();
        std::vector<std::unique_ptr<audio::PlayingSound>> sounds(kSounds);
        for (int i = 0; i < kSounds; ++i) {
            media::Movie movie;
            if (media::MovieFromFile(paths[size_t(i) % paths.size()], movie) != util::kNoError ||
                audio::PlayingSound::Make(std::move(movie), sounds[size_t(i)]) != util::kNoError) {
                std::fprintf(stderr, "cannot play a sound: %s\n", media::LastMediaErrorDetail().c_str());
                return 1;
            }
            sounds[size_t(i)]->SetVolume(2);
        }
        for (auto& sound : sounds) sound->Start();
        for (auto& sound : sounds)
            while (!sound->IsDone()) std::this_thread::sleep_for(std::chrono::milliseconds(1));
        sounds.clear();
        const double cpu = CpuSeconds() - cpuBefore;
        const double wall = std::chrono::duration<double>(std::chrono::steady_clock::now() - wallBefore).count();
        percents.push_back(100 * cpu / kSeconds);
        std::printf("run %d: %d sounds of %d s mixed in %.3f s wall, %.3f s CPU: %.2f%% of one core\n", run + 1, kSounds,
                    kSeconds, wall, cpu, percents.back());
    }
    audio::ShutDownOutput();
    std::filesystem::remove_all(folder);
    std::sort(percents.begin(), percents.end());
    std::printf("median CPU per second of sound: %.2f%% of one core (target <= 5%%)\n", percents[percents.size() / 2]);
    return 0;
}
