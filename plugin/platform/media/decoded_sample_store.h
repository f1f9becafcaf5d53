// Sound that was decoded before it was asked for: a compressed file's samples as the decoding store
// would give them, held in memory as interleaved floats.
#pragma once

#include "platform/media/sample_store.h"

#include <cstdlib>
#include <utility>

namespace vd::media {

// Interleaved floats that grow at the end without being cleared first and, being one malloc'ed
// block, move by remapping rather than copying when they outgrow their room: a 10-minute sound
// is 200 MB, and zeroing or copying it would cost as much as decoding it.
class FloatBuffer {
public:
    FloatBuffer() = default;
    ~FloatBuffer() { std::free(data_); }
    FloatBuffer(FloatBuffer&& other) noexcept { *this = std::move(other); }
    FloatBuffer& operator=(FloatBuffer&& other) noexcept {
        std::swap(data_, other.data_);
        std::swap(size_, other.size_);
        std::swap(capacity_, other.capacity_);
        return *this;
    }

    // Room for count more floats at the end; nullptr when it cannot be had. Commit what was written.
    float* Extend(size_t count);
    void Commit(size_t count) { size_ += count; }
    void Reserve(size_t count);  // advice: too little memory leaves it as it was

    const float* Data() const { return data_; }
    size_t Size() const { return size_; }

private:
    bool Grow(size_t capacity);

    float* data_ = nullptr;
    size_t size_ = 0;
    size_t capacity_ = 0;
};

// The decoded frames of a file's one sound stream, handed to MovieFromFile so that it need not
// decode the stream again: frames [skipped, skipped + Frames()) of the buffer.
struct PredecodedSound {
    int channels = 0;
    FloatBuffer samples;
    int64_t skipped = 0;
    int64_t kept = -1;  // -1: all the buffer holds after the skipped frames

    int64_t Frames() const {
        const int64_t held = channels > 0 ? int64_t(samples.Size() / size_t(channels)) - skipped : 0;
        return kept >= 0 && kept < held ? kept : held;
    }
};

class DecodedSampleStore final : public SampleStore {
public:
    explicit DecodedSampleStore(PredecodedSound&& sound) : sound_(std::move(sound)) {}

    bool ByteAddressable() const override { return false; }
    Status ReadFloatFrames(int64_t firstFrame, int64_t frames, float* out, int64_t* framesRead) override;

private:
    PredecodedSound sound_;
};

}  // namespace vd::media
