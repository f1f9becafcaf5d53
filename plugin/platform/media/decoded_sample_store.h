// Sound that was decoded before it was asked for: a compressed file's samples as the decoding store
// would give them, held in memory as interleaved floats.
#pragma once

#include "platform/media/sample_store.h"

#include <vector>

namespace vd::media {

// The decoded frames of a file's one sound stream, handed to MovieFromFile so that it need not
// decode the stream again.
struct PredecodedSound {
    int channels = 0;
    std::vector<float> samples;  // interleaved
    int64_t Frames() const { return channels > 0 ? int64_t(samples.size() / size_t(channels)) : 0; }
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
