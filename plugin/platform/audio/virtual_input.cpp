// The virtual device's input: a thread that delivers a tone or a file's sound in blocks, in real
// time or as fast as the sink takes them (input_device.h).
#include "platform/audio/input_device.h"
#include "platform/audio/virtual_options.h"

#include "platform/media/block_source.h"
#include "platform/media/movie_from_file.h"
#include "platform/media/sound_writer.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cmath>
#include <new>
#include <thread>
#include <vector>

namespace vd::audio {

namespace {

constexpr double kToneFrequency = 440;
constexpr double kToneAmplitude = 0.25;

// The whole sound of a file at the input's rate and channels, read before the thread starts so
// that the thread only copies.
Status LoadLoop(const std::string& path, int32_t rate, int channels, std::vector<float>& loop) {
    const auto failure = [&](const std::string& why) {
        return media::MediaFailure(util::kNoSoundOutput, "VANDREL_AUDIO: the virtual input in=" + path + " " + why);
    };
    media::Movie movie;
    if (media::MovieFromFile(path, movie) != util::kNoError) return failure("is no sound file we read");
    media::OutputFormat format;
    format.sampleRate = rate;
    format.channels = int16_t(channels);
    std::unique_ptr<media::MixedBlockSource> source;
    if (media::MixedBlockSource::Open(movie, format, {}, source) != util::kNoError) return failure("has no sound");
    std::vector<int16_t> block(4096 * size_t(channels));
    for (;;) {
        size_t frames = 0;
        if (source->Read(block.data(), 4096, frames) != util::kNoError) return failure("cannot be read");
        if (frames == 0) break;
        for (size_t i = 0; i < frames * size_t(channels); ++i) loop.push_back(float(block[i]) / 32768.0f);
    }
    if (loop.empty()) return failure("has no sound");
    return util::kNoError;
}

class VirtualInput final : public InputDevice {
public:
    VirtualInput(std::vector<float> loop, int32_t rate, int channels, bool fast, int64_t length, SampleSink& sink)
        : loop_(std::move(loop)), rate_(rate), channels_(channels), fast_(fast), length_(length), sink_(sink),
          block_(kInputBlockFrames * size_t(channels)), thread_([this] { Run(); }) {}
    ~VirtualInput() override {
        stopping_ = true;
        thread_.join();
    }
    bool Ended() const override { return ended_.load(); }

private:
    void Run() {
        using Clock = std::chrono::steady_clock;
        const auto blockTime = std::chrono::duration_cast<Clock::duration>(
            std::chrono::duration<double>(double(kInputBlockFrames) / rate_));
        auto next = Clock::now();
        while (!stopping_) {
            if (length_ > 0 && frame_ >= length_) {
                ended_ = true;
                std::this_thread::sleep_for(std::chrono::milliseconds(5));
                continue;
            }
            if (fast_ && sink_.Room() < kInputBlockFrames) {
                std::this_thread::sleep_for(std::chrono::microseconds(200));
                continue;
            }
            const size_t frames = length_ > 0 ? size_t(std::min<int64_t>(kInputBlockFrames, length_ - frame_))
                                              : kInputBlockFrames;
            Fill(frames);
            sink_.Deliver(block_.data(), frames);
            if (!fast_) {
                // A late block (the machine was busy) is not made up for by a burst.
                next = std::max(next + blockTime, Clock::now() - blockTime);
                std::this_thread::sleep_until(next);
            }
        }
    }

    void Fill(size_t frames) {
        const size_t channels = size_t(channels_);
        for (size_t i = 0; i < frames; ++i, ++frame_) {
            if (loop_.empty()) {
                const double phase = 2 * M_PI * kToneFrequency * double(frame_) / rate_;
                const auto sample = float(kToneAmplitude * std::sin(phase));
                for (size_t c = 0; c < channels; ++c) block_[i * channels + c] = sample;
            } else {
                const size_t at = size_t(frame_ % int64_t(loop_.size() / channels)) * channels;
                for (size_t c = 0; c < channels; ++c) block_[i * channels + c] = loop_[at + c];
            }
        }
    }

    const std::vector<float> loop_;  // empty: the tone
    const int32_t rate_;
    const int channels_;
    const bool fast_;
    const int64_t length_;  // frames; 0: no end
    SampleSink& sink_;
    std::vector<float> block_;
    int64_t frame_ = 0;
    std::atomic<bool> stopping_{false};
    std::atomic<bool> ended_{false};
    std::thread thread_;  // last: starts once everything it uses is there
};

}  // namespace

Status OpenVirtualInput(const std::string& options, int32_t rate, int channels, SampleSink& sink,
                        std::unique_ptr<InputDevice>& device) {
    VirtualOptions parsed;
    if (const Status status = ParseVirtualOptions(options, parsed); status != util::kNoError) return status;
    if (parsed.in.empty())
        return media::MediaFailure(util::kNoSoundOutput, "VANDREL_AUDIO: the virtual device has no input (in=tone|PATH)");
    std::vector<float> loop;
    try {
        if (parsed.in != "tone")
            if (const Status status = LoadLoop(parsed.in, rate, channels, loop); status != util::kNoError) return status;
        const auto length = int64_t(std::llround(parsed.length * rate));
        device = std::make_unique<VirtualInput>(std::move(loop), rate, channels, parsed.fast, length, sink);
    } catch (const std::bad_alloc&) {
        return media::MediaFailure(util::kMemoryFull, "no memory for the virtual input");
    }
    return util::kNoError;
}

}  // namespace vd::audio
