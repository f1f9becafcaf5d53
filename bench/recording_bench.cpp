// What a background recording costs and whether it keeps up: 44.1 kHz stereo from the virtual input
// (a tone, in real time) recorded into a movie file, drained by the shared timer as in the plug-in.
//  - CPU: the process's user + system time per second of recording, less the same time with the
//    input alone delivering into a sink that keeps nothing (the stand-in for the sound hardware),
//    in percent of one core.
//  - A busy host: while recording, the host's thread calculates for one second and a second thread
//    keeps the other core busy; the drop counter says how many input frames never reached the file.
#include "platform/audio/input_device.h"
#include "playback/media_pool.h"
#include "recording/recorder.h"
#include "recording/recording_session.h"

#include <sys/resource.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <thread>

namespace {

using Clock = std::chrono::steady_clock;
constexpr int kSeconds = 10;
constexpr int kRuns = 3;

double CpuSeconds() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return double(usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) +
           double(usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1e6;
}

class Discard final : public vd::audio::SampleSink {
public:
    void Deliver(const float*, size_t) override {}
    size_t Room() const override { return 1 << 20; }
};

double InputAloneCpu() {
    Discard sink;
    std::unique_ptr<vd::audio::InputDevice> input;
    if (vd::audio::OpenInputDevice(44100, 2, "", sink, input)) return -1;
    const double before = CpuSeconds();
    std::this_thread::sleep_for(std::chrono::seconds(kSeconds));
    input.reset();
    return CpuSeconds() - before;
}

// Records for `seconds` while `during` runs on this thread; answers the CPU time, the frames the
// file got and the frames dropped.
template <typename During>
bool Record(const std::string& path, double seconds, During during, double& cpu, int64_t& frames, uint64_t& dropped) {
    const double before = CpuSeconds();
    const auto start = Clock::now();
    std::shared_ptr<vd::recording::RecordingEntry> entry;
    if (vd::recording::BeginRecording(path, entry)) return false;
    during();
    std::this_thread::sleep_until(start + std::chrono::duration<double>(seconds));
    vd::recording::Recorder::Instance()->UnregisterAll();
    dropped = entry->FramesDropped();
    if (entry->Stop()) return false;
    cpu = CpuSeconds() - before;
    frames = entry->FramesRecorded();
    return true;
}

}  // namespace

int main() {
    setenv("VANDREL_AUDIO", "virtual:in=tone", 1);
    const auto folder = std::filesystem::temp_directory_path() / ("recording_bench." + std::to_string(getpid()));
    std::filesystem::create_directories(folder);
    const std::string path = (folder / "take.mov").string();
    std::ofstream(path).close();

    for (int run = 1; run <= kRuns; ++run) {
        const double alone = InputAloneCpu();
        double cpu = 0;
        int64_t frames = 0;
        uint64_t dropped = 0;
        if (alone < 0 || !Record(path, kSeconds, [] {}, cpu, frames, dropped)) {
            std::fprintf(stderr, "the virtual input or the recording could not be had\n");
            return 1;
        }
        std::printf("run %d: recording %.2f%% of a core per second (input alone %.2f%%, with it %.2f%%), "
                    "%.3f s recorded in %d s, %llu frames dropped\n",
                    run, 100 * (cpu - alone) / kSeconds, 100 * alone / kSeconds, 100 * cpu / kSeconds,
                    double(frames) / 44100, kSeconds, static_cast<unsigned long long>(dropped));
    }

    // The host busy in a one-second calculation on its own thread, the other core busy too.
    std::atomic<bool> spin{true};
    std::thread other([&] {
        volatile double x = 0;
        while (spin) x = x + std::sqrt(x + 1);
    });
    double cpu = 0;
    int64_t frames = 0;
    uint64_t dropped = 0;
    const bool ok = Record(path, 3, [] {
        const auto end = Clock::now() + std::chrono::seconds(1);
        volatile double x = 0;
        while (Clock::now() < end) x = x + std::sqrt(x + 1);
    }, cpu, frames, dropped);
    spin = false;
    other.join();
    if (!ok) return 1;
    std::printf("busy host (1-second calculation, both cores busy): %.3f s recorded in 3 s, %llu frames dropped\n",
                double(frames) / 44100, static_cast<unsigned long long>(dropped));

    vd::recording::Recorder::Destroy();
    vd::playback::MediaPool::Destroy();
    std::filesystem::remove_all(folder);
    return 0;
}
