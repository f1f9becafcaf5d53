// Our own output device: a thread that renders the mix a block at a time, in real time or as fast
// as the sounds are decoded, and may capture what it renders with a log of when each change took
// effect (output_device.h).
#include "platform/audio/output_device.h"
#include "platform/audio/virtual_options.h"

#include <atomic>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <thread>
#include <vector>

namespace vd::audio {

namespace {

struct FileCloser {
    void operator()(FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<FILE, FileCloser>;

void PutLe32(unsigned char* at, uint32_t value) {
    for (int i = 0; i < 4; ++i) at[i] = static_cast<unsigned char>(value >> (8 * i));
}

// A 32-bit float stereo WAV whose header always describes the frames written so far.
class FloatWavCapture {
public:
    static Status Open(const std::string& path, std::unique_ptr<FloatWavCapture>& capture) {
        File wav(std::fopen(path.c_str(), "wb"));
        File log(wav ? std::fopen((path + ".log").c_str(), "w") : nullptr);
        if (!wav || !log)
            return media::MediaFailure(util::kNoSoundOutput, "the virtual sound output cannot write " + path + ": " +
                                                                  std::strerror(errno));
        capture.reset(new FloatWavCapture(std::move(wav), std::move(log)));
        capture->WriteHeader();
        return util::kNoError;
    }

    void Write(const float* frames, size_t count, int64_t firstFrame, const EventList& events) {
        std::fwrite(frames, sizeof(float) * 2, count, wav_.get());
        frames_ += count;
        WriteHeader();
        LogEvents(firstFrame, events);
    }

    void LogEvents(int64_t firstFrame, const EventList& events) {
        for (size_t i = 0; i < events.count; ++i) {
            const MixEvent& e = events.events[i];
            std::fprintf(log_.get(), "%lld %s %d %.9g\n", static_cast<long long>(firstFrame + int64_t(e.offset)),
                         EventName(e.kind), e.sound, e.value);
        }
        std::fflush(log_.get());
    }

private:
    FloatWavCapture(File wav, File log) : wav_(std::move(wav)), log_(std::move(log)) {}

    void WriteHeader() {
        const uint32_t dataBytes = static_cast<uint32_t>(frames_ * 8);
        unsigned char header[44];
        std::memcpy(header, "RIFF", 4);
        PutLe32(header + 4, 36 + dataBytes);
        std::memcpy(header + 8, "WAVEfmt ", 8);
        PutLe32(header + 16, 16);
        header[20] = 3, header[21] = 0;  // IEEE float
        header[22] = 2, header[23] = 0;  // channels
        PutLe32(header + 24, kOutputRate);
        PutLe32(header + 28, kOutputRate * 8);
        header[32] = 8, header[33] = 0;   // bytes per frame
        header[34] = 32, header[35] = 0;  // bits per sample
        std::memcpy(header + 36, "data", 4);
        PutLe32(header + 40, dataBytes);
        std::fseek(wav_.get(), 0, SEEK_SET);
        std::fwrite(header, 1, sizeof header, wav_.get());
        std::fseek(wav_.get(), 0, SEEK_END);
        std::fflush(wav_.get());
    }

    File wav_, log_;
    int64_t frames_ = 0;
};

class VirtualDevice final : public OutputDevice {
public:
    VirtualDevice(BlockRenderer& renderer, bool fast, std::unique_ptr<FloatWavCapture> capture)
        : renderer_(renderer), fast_(fast), capture_(std::move(capture)), thread_([this] { Run(); }) {}
    ~VirtualDevice() override {
        stopping_ = true;
        thread_.join();
    }

private:
    void Run() {
        using Clock = std::chrono::steady_clock;
        const auto blockTime = std::chrono::duration_cast<Clock::duration>(
            std::chrono::duration<double>(double(kVirtualBlockFrames) / kOutputRate));
        std::vector<float> block(2 * kVirtualBlockFrames);
        auto events = std::make_unique<EventList>();
        int64_t written = 0;
        auto next = Clock::now();
        while (!stopping_) {
            events->count = 0;
            const Mixer::Outcome outcome = renderer_.RenderBlock(block.data(), kVirtualBlockFrames, fast_, events.get());
            if (outcome == Mixer::Outcome::kNotReady) {
                std::this_thread::sleep_for(std::chrono::microseconds(200));
                continue;
            }
            if (capture_) {
                if (outcome == Mixer::Outcome::kAudible) {
                    capture_->Write(block.data(), kVirtualBlockFrames, written, *events);
                    written += int64_t(kVirtualBlockFrames);
                } else if (events->count) {
                    capture_->LogEvents(written, *events);
                }
            }
            if (!fast_) {
                // A late block (the machine was busy) is not made up for by a burst.
                next = std::max(next + blockTime, Clock::now() - blockTime);
                std::this_thread::sleep_until(next);
            } else if (outcome == Mixer::Outcome::kSilent) {
                std::this_thread::sleep_for(std::chrono::milliseconds(1));
            }
        }
    }

    BlockRenderer& renderer_;
    const bool fast_;
    std::unique_ptr<FloatWavCapture> capture_;
    std::atomic<bool> stopping_{false};
    std::thread thread_;  // last: starts once everything it uses is there
};

}  // namespace

Status OpenVirtualDevice(const std::string& options, BlockRenderer& renderer, std::unique_ptr<OutputDevice>& device) {
    VirtualOptions parsed;
    if (const Status status = ParseVirtualOptions(options, parsed); status != util::kNoError) return status;
    const bool fast = parsed.fast;
    const std::string& out = parsed.out;
    std::unique_ptr<FloatWavCapture> capture;
    if (!out.empty())
        if (const Status status = FloatWavCapture::Open(out, capture); status != util::kNoError) return status;
    device = std::make_unique<VirtualDevice>(renderer, fast, std::move(capture));
    return util::kNoError;
}

}  // namespace vd::audio
