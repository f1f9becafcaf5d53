// Rate and channel conversion of interleaved float sound through libswresample, for mixing
// tracks of any rate and layout into the output's. Mono goes to both channels at full level
// (as a mono sound plays on both speakers), not at the -3 dB of a centre-channel downmix.
#pragma once

#include "platform/media/errors.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace vd::media {

class Resampler {
public:
    static Status Create(int inRate, int inChannels, int outRate, int outChannels, std::unique_ptr<Resampler>& out);
    ~Resampler();
    Resampler(const Resampler&) = delete;
    Resampler& operator=(const Resampler&) = delete;

    // Appends the converted frames of `frames` input frames to out. Flush (in == nullptr,
    // frames == 0) appends what the filter still holds at the end.
    Status Convert(const float* in, int64_t frames, std::vector<float>& out);

private:
    struct State;
    explicit Resampler(std::unique_ptr<State> state);
    std::unique_ptr<State> state_;
};

}  // namespace vd::media
