#include "platform/media/decoder_session.h"

#include "platform/media/ffmpeg_functions.h"

#include <new>

namespace vd::media {

Status DecoderSession::Allocate(const AVCodec* decoder) {
    codec.reset(avcodec_alloc_context3(decoder));
    packet.reset(av_packet_alloc());
    frame.reset(av_frame_alloc());
    if (!codec || !packet || !frame) return MediaFailure(util::kMemoryFull, "no memory for a decoder");
    return util::kNoError;
}

Status DecoderSession::MakeConverter(int channels, AVSampleFormat format) {
    if (converter) return util::kNoError;
    AVChannelLayout layout;
    av_channel_layout_default(&layout, channels);
    SwrContext* raw = nullptr;
    int rc = swr_alloc_set_opts2(&raw, &layout, format, frame->sample_rate, &frame->ch_layout,
                                 AVSampleFormat(frame->format), frame->sample_rate, 0, nullptr);
    converter.reset(raw);
    av_channel_layout_uninit(&layout);
    if (rc < 0 || (rc = swr_init(raw)) < 0) {
        av_frame_unref(frame.get());
        converter.reset();
        return StatusFromAvError(rc, MediaStep::kReading);
    }
    return util::kNoError;
}

Status DecoderSession::AppendFloats(int channels, std::vector<float>& out, size_t* frames) {
    *frames = 0;
    const size_t kept = out.size();
    try {
        out.resize(kept + size_t(frame->nb_samples) * size_t(channels));
    } catch (const std::bad_alloc&) {
        av_frame_unref(frame.get());
        return MediaFailure(util::kMemoryFull, "no memory for decoded samples");
    }
    const Status s = ConvertInto(channels, out.data() + kept, frames);
    out.resize(kept + *frames * size_t(channels));
    return s;
}

Status DecoderSession::ConvertInto(int channels, float* out, size_t* frames) {
    *frames = 0;
    if (Status s = MakeConverter(channels, AV_SAMPLE_FMT_FLT)) return s;
    uint8_t* outPlane = reinterpret_cast<uint8_t*>(out);
    const int converted = swr_convert(converter.get(), &outPlane, frame->nb_samples,
                                      const_cast<const uint8_t**>(frame->extended_data), frame->nb_samples);
    const auto decodedFormat = AVSampleFormat(frame->format);
    const bool floating = decodedFormat == AV_SAMPLE_FMT_FLT || decodedFormat == AV_SAMPLE_FMT_FLTP ||
                          decodedFormat == AV_SAMPLE_FMT_DBL || decodedFormat == AV_SAMPLE_FMT_DBLP;
    av_frame_unref(frame.get());
    if (converted < 0) return StatusFromAvError(converted, MediaStep::kReading);
    const size_t count = size_t(converted) * size_t(channels);
    if (floating)
        for (size_t i = 0; i < count; ++i)
            if (out[i] != out[i]) out[i] = 0.0f;
    *frames = size_t(converted);
    return util::kNoError;
}

}  // namespace vd::media
