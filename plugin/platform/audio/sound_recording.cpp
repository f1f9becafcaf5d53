#include "platform/audio/sound_recording.h"

#include "platform/audio/input_device.h"
#include "platform/media/pcm_movie_writer.h"

#include <algorithm>
#include <atomic>
#include <new>
#include <vector>

namespace vd::audio {

namespace {

// How long the host may go without draining before frames are lost.
constexpr int kRingSeconds = 2;
// The most frames moved into the file at once (a packet of the movie).
constexpr size_t kDrainChunkFrames = 8192;

}  // namespace

// One writer (the input's thread), one reader (the host's thread). Both positions only grow;
// each side stores its own and loads the other's, so neither waits for the other.
class SoundRecording::Ring final : public SampleSink {
public:
    Ring(size_t frames, int channels) : samples_(frames * size_t(channels)), frames_(frames), channels_(size_t(channels)) {}

    void Deliver(const float* samples, size_t frames) override {
        if (paused_.load(std::memory_order_relaxed)) return;
        const uint64_t written = written_.load(std::memory_order_relaxed);
        const uint64_t room = frames_ - (written - read_.load(std::memory_order_acquire));
        const size_t taken = size_t(std::min<uint64_t>(frames, room));
        for (size_t i = 0; i < taken; ++i) {
            const size_t at = size_t((written + i) % frames_) * channels_;
            for (size_t c = 0; c < channels_; ++c) samples_[at + c] = samples[i * channels_ + c];
        }
        written_.store(written + taken, std::memory_order_release);
        if (taken < frames) dropped_.fetch_add(frames - taken, std::memory_order_relaxed);
    }

    size_t Room() const override {
        return size_t(frames_ - (written_.load(std::memory_order_acquire) - read_.load(std::memory_order_relaxed)));
    }

    // The frames held, oldest first, in at most two spans of the buffer; Consume lets them go.
    size_t Peek(const float*& first, size_t& firstFrames, const float*& second) const {
        const uint64_t read = read_.load(std::memory_order_relaxed);
        const size_t held = size_t(written_.load(std::memory_order_acquire) - read);
        const size_t start = size_t(read % frames_);
        firstFrames = std::min(held, frames_ - start);
        first = samples_.data() + start * channels_;
        second = samples_.data();
        return held;
    }
    void Consume(size_t frames) { read_.store(read_.load(std::memory_order_relaxed) + frames, std::memory_order_release); }

    void SetPaused(bool paused) { paused_.store(paused, std::memory_order_relaxed); }
    size_t Channels() const { return channels_; }
    uint64_t Dropped() const { return dropped_.load(std::memory_order_relaxed); }

private:
    std::vector<float> samples_;
    const size_t frames_;
    const size_t channels_;
    std::atomic<uint64_t> written_{0};
    std::atomic<uint64_t> read_{0};
    std::atomic<uint64_t> dropped_{0};
    std::atomic<bool> paused_{false};
};

struct SoundRecording::Parts {
    Parts(size_t ringFrames, int channels) : ring(ringFrames, channels) {}
    Ring ring;
    std::unique_ptr<media::PcmMovieWriter> writer;
    std::unique_ptr<InputDevice> input;  // stopped before the ring goes
    bool finished = false;
};

SoundRecording::SoundRecording(std::unique_ptr<Parts> parts) : parts_(std::move(parts)) {}

SoundRecording::~SoundRecording() { (void)Finish(); }

Status SoundRecording::Start(const std::string& path, const RecordingFormat& format,
                             std::unique_ptr<SoundRecording>& out) {
    if (format.channels < 1 || format.channels > 2)
        return media::MediaFailure(util::kBadParameter, "a recording is mono or stereo, not " +
                                                            std::to_string(format.channels) + " channels");
    if (format.sampleSize != 8 && format.sampleSize != 16 && format.sampleSize != 24)
        return media::MediaFailure(util::kBadParameter, "a recording holds 8, 16 or 24-bit samples, not " +
                                                            std::to_string(format.sampleSize));
    if (format.sampleRate < 1000 || format.sampleRate > 192000)
        return media::MediaFailure(util::kBadParameter, "a recording's rate is 1000 to 192000 Hz, not " +
                                                            std::to_string(format.sampleRate));
    try {
        auto parts = std::make_unique<Parts>(size_t(format.sampleRate) * kRingSeconds, format.channels);
        if (Status s = OpenInputDevice(format.sampleRate, format.channels, format.device, parts->ring, parts->input)) return s;
        if (Status s = media::PcmMovieWriter::Open(path, format.sampleRate, format.channels, format.sampleSize,
                                                   parts->writer))
            return s;
        out.reset(new SoundRecording(std::move(parts)));
        return util::kNoError;
    } catch (const std::bad_alloc&) {
        return media::MediaFailure(util::kMemoryFull, "no memory for a recording");
    }
}

void SoundRecording::Pause() { parts_->ring.SetPaused(true); }

void SoundRecording::Resume() { parts_->ring.SetPaused(false); }

Status SoundRecording::Drain() {
    if (parts_->finished) return util::kNoError;
    Ring& ring = parts_->ring;
    const float* first = nullptr;
    const float* second = nullptr;
    size_t firstFrames = 0;
    const size_t held = ring.Peek(first, firstFrames, second);
    for (size_t done = 0; done < held;) {
        const size_t frames = std::min(kDrainChunkFrames, done < firstFrames ? firstFrames - done : held - done);
        const float* from = done < firstFrames ? first : second;
        const size_t offset = done < firstFrames ? done : done - firstFrames;
        if (Status s = parts_->writer->Write(from + offset * ring.Channels(), frames)) return s;
        ring.Consume(frames);
        done += frames;
    }
    return parts_->writer->Flush();
}

Status SoundRecording::Finish() {
    if (parts_->finished) return util::kNoError;
    parts_->input.reset();
    Status status = Drain();
    parts_->finished = true;
    if (Status s = parts_->writer->Finish(); !status) status = s;
    return status;
}

bool SoundRecording::InputEnded() const { return !parts_->input || parts_->input->Ended(); }

int64_t SoundRecording::FramesRecorded() const { return parts_->writer->FramesWritten(); }

uint64_t SoundRecording::FramesDropped() const { return parts_->ring.Dropped(); }

}  // namespace vd::audio
