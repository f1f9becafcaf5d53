// Owners for FFmpeg's objects, each released by the library's own function. Used only inside
// platform/media: the movie layer's public headers never name an FFmpeg type.
#pragma once

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libswresample/swresample.h>
}

#include <memory>

namespace vd::media {

struct InputFormatCloser {
    void operator()(AVFormatContext* c) const { avformat_close_input(&c); }
};
struct OutputFormatFreer {
    void operator()(AVFormatContext* c) const { avformat_free_context(c); }
};
struct CodecContextFreer {
    void operator()(AVCodecContext* c) const { avcodec_free_context(&c); }
};
struct SwrFreer {
    void operator()(SwrContext* c) const { swr_free(&c); }
};
struct PacketFreer {
    void operator()(AVPacket* p) const { av_packet_free(&p); }
};
struct FrameFreer {
    void operator()(AVFrame* f) const { av_frame_free(&f); }
};
struct IoContextCloser {
    void operator()(AVIOContext* c) const { avio_closep(&c); }
};

using InputFormatPtr = std::unique_ptr<AVFormatContext, InputFormatCloser>;
using OutputFormatPtr = std::unique_ptr<AVFormatContext, OutputFormatFreer>;
using CodecContextPtr = std::unique_ptr<AVCodecContext, CodecContextFreer>;
using SwrPtr = std::unique_ptr<SwrContext, SwrFreer>;
using PacketPtr = std::unique_ptr<AVPacket, PacketFreer>;
using FramePtr = std::unique_ptr<AVFrame, FrameFreer>;
using IoContextPtr = std::unique_ptr<AVIOContext, IoContextCloser>;

}  // namespace vd::media
