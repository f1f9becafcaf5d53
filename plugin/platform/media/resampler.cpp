#include "platform/media/resampler.h"

#include "platform/media/av_owners.h"
#include "platform/media/ffmpeg_functions.h"

#include <new>

namespace vd::media {

struct Resampler::State {
    SwrPtr swr;
    int inRate = 0, outRate = 0, outChannels = 0;
};

Resampler::Resampler(std::unique_ptr<State> state) : state_(std::move(state)) {}
Resampler::~Resampler() = default;

Status Resampler::Create(int inRate, int inChannels, int outRate, int outChannels, std::unique_ptr<Resampler>& out) {
    if (inRate <= 0 || outRate <= 0 || inChannels <= 0 || outChannels <= 0)
        return MediaFailure(util::kBadParameter, "a rate or channel count below 1");
    if (Status s = StartFfmpeg()) return s;
    auto state = std::unique_ptr<State>(new (std::nothrow) State);
    if (!state) return MediaFailure(util::kMemoryFull, "no memory for a resampler");
    AVChannelLayout inLayout, outLayout;
    av_channel_layout_default(&inLayout, inChannels);
    av_channel_layout_default(&outLayout, outChannels);
    SwrContext* raw = nullptr;
    int rc = swr_alloc_set_opts2(&raw, &outLayout, AV_SAMPLE_FMT_FLT, outRate, &inLayout, AV_SAMPLE_FMT_FLT, inRate,
                                 0, nullptr);
    state->swr.reset(raw);
    av_channel_layout_uninit(&inLayout);
    av_channel_layout_uninit(&outLayout);
    if (rc < 0) return StatusFromAvError(rc, MediaStep::kReading);
    if (inChannels == 1) {
        std::vector<double> matrix(size_t(outChannels), 0.0);
        matrix[0] = 1.0;
        if (outChannels >= 2) matrix[1] = 1.0;
        if ((rc = swr_set_matrix(raw, matrix.data(), 1)) < 0) return StatusFromAvError(rc, MediaStep::kReading);
    }
    if ((rc = swr_init(raw)) < 0) return StatusFromAvError(rc, MediaStep::kReading);
    state->inRate = inRate;
    state->outRate = outRate;
    state->outChannels = outChannels;
    out.reset(new (std::nothrow) Resampler(std::move(state)));
    if (!out) return MediaFailure(util::kMemoryFull, "no memory for a resampler");
    return util::kNoError;
}

Status Resampler::Convert(const float* in, int64_t frames, std::vector<float>& out) {
    SwrContext* swr = state_->swr.get();
    const int capacity = swr_get_out_samples(swr, int(frames));
    if (capacity < 0) return StatusFromAvError(capacity, MediaStep::kReading);
    const size_t at = out.size();
    try {
        out.resize(at + size_t(capacity) * size_t(state_->outChannels));
    } catch (const std::bad_alloc&) {
        return MediaFailure(util::kMemoryFull, "no memory for resampled sound");
    }
    uint8_t* outPlane = reinterpret_cast<uint8_t*>(out.data() + at);
    const uint8_t* inPlane = reinterpret_cast<const uint8_t*>(in);
    int converted = swr_convert(swr, &outPlane, capacity, in ? &inPlane : nullptr, int(frames));
    if (converted < 0) {
        out.resize(at);
        return StatusFromAvError(converted, MediaStep::kReading);
    }
    out.resize(at + size_t(converted) * size_t(state_->outChannels));
    return util::kNoError;
}

}  // namespace vd::media
