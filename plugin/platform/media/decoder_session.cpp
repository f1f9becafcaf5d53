#include "platform/media/decoder_session.h"

#include "platform/media/ffmpeg_functions.h"

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

}  // namespace vd::media
