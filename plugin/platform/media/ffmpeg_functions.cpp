// FFmpeg's functions, reached through addresses resolved on first use.
//
// Each function the layer calls is defined here under its own name, with the parameters of its
// FFmpeg header (a C function of the same name with other parameters does not compile), and jumps
// to the library's function. The module is linked with --no-undefined, so a call to a function
// missing from the list fails the build, not the first use on a user's machine. The definitions are
// hidden: a library loaded beside us must never be bound to them instead of FFmpeg's own.
#include "platform/media/ffmpeg_functions.h"

#include "platform/common/lazy_library.h"
#include "platform/common/library_sonames.h"

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/channel_layout.h>
#include <libavutil/dict.h>
#include <libavutil/error.h>
#include <libavutil/frame.h>
#include <libavutil/log.h>
#include <libavutil/mathematics.h>
#include <libavutil/parseutils.h>
#include <libswresample/swresample.h>
}

#include <iterator>
#include <string>

// A few of FFmpeg's functions carry warn-unused-result; the attribute does not travel into the
// pointer types the lazy table is made of, which is all this warning says.
#pragma GCC diagnostic ignored "-Wignored-attributes"

// The sonames we load say which major versions we call; the headers we compiled against must be
// the same ones, or the addresses would be called with another library's structures.
static_assert(LIBAVFORMAT_VERSION_MAJOR == 59 && LIBAVCODEC_VERSION_MAJOR == 59 && LIBSWRESAMPLE_VERSION_MAJOR == 4 &&
                  LIBAVUTIL_VERSION_MAJOR == 57,
              "the FFmpeg headers do not match the libraries in library_sonames.h");

namespace vd::media {

namespace {

enum Library : size_t { kAvFormat, kAvCodec, kSwResample, kAvUtil };
constexpr const char* kSonames[] = {platform::kAvFormatLibrary, platform::kAvCodecLibrary,
                                    platform::kSwResampleLibrary, platform::kAvUtilLibrary};

// library, function, parameters, arguments
#define VD_FFMPEG_FUNCTIONS(X)                                                                                      \
    X(kAvFormat, avformat_open_input, (AVFormatContext** ps, const char* url, const AVInputFormat* fmt,             \
                                       AVDictionary** options), (ps, url, fmt, options))                            \
    X(kAvFormat, avformat_find_stream_info, (AVFormatContext* ic, AVDictionary** options), (ic, options))           \
    X(kAvFormat, avformat_close_input, (AVFormatContext** s), (s))                                                  \
    X(kAvFormat, av_read_frame, (AVFormatContext* s, AVPacket* pkt), (s, pkt))                                      \
    X(kAvFormat, av_guess_format, (const char* short_name, const char* filename, const char* mime_type),            \
      (short_name, filename, mime_type))                                                                            \
    X(kAvFormat, avformat_alloc_output_context2, (AVFormatContext** ctx, const AVOutputFormat* oformat,             \
                                                  const char* format_name, const char* filename),                   \
      (ctx, oformat, format_name, filename))                                                                        \
    X(kAvFormat, avformat_new_stream, (AVFormatContext* s, const AVCodec* c), (s, c))                               \
    X(kAvFormat, avformat_free_context, (AVFormatContext* s), (s))                                                  \
    X(kAvFormat, avio_open, (AVIOContext** s, const char* url, int flags), (s, url, flags))                         \
    X(kAvFormat, avio_closep, (AVIOContext** s), (s))                                                               \
    X(kAvFormat, avformat_write_header, (AVFormatContext* s, AVDictionary** options), (s, options))                 \
    X(kAvFormat, av_write_trailer, (AVFormatContext* s), (s))                                                       \
    X(kAvFormat, av_write_frame, (AVFormatContext* s, AVPacket* pkt), (s, pkt))                                    \
    X(kAvFormat, avio_flush, (AVIOContext* s), (s))                                                                 \
    X(kAvFormat, av_interleaved_write_frame, (AVFormatContext* s, AVPacket* pkt), (s, pkt))                         \
    X(kAvCodec, avcodec_find_encoder_by_name, (const char* name), (name))                                           \
    X(kAvCodec, avcodec_parameters_from_context, (AVCodecParameters* par, const AVCodecContext* codec),             \
      (par, codec))                                                                                                 \
    X(kAvCodec, avcodec_send_frame, (AVCodecContext* avctx, const AVFrame* frame), (avctx, frame))                  \
    X(kAvCodec, avcodec_receive_packet, (AVCodecContext* avctx, AVPacket* avpkt), (avctx, avpkt))                   \
    X(kAvCodec, av_packet_clone, (const AVPacket* src), (src))                                                      \
    X(kAvCodec, av_packet_get_side_data, (const AVPacket* pkt, enum AVPacketSideDataType type, size_t* size),        \
      (pkt, type, size))                                                                                            \
    X(kAvCodec, av_packet_rescale_ts, (AVPacket* pkt, AVRational tb_src, AVRational tb_dst), (pkt, tb_src, tb_dst)) \
    X(kAvUtil, av_frame_get_buffer, (AVFrame* frame, int align), (frame, align))                                    \
    X(kAvUtil, av_frame_make_writable, (AVFrame* frame), (frame))                                                   \
    X(kAvUtil, av_channel_layout_copy, (AVChannelLayout* dst, const AVChannelLayout* src), (dst, src))              \
    X(kAvCodec, avcodec_find_decoder, (enum AVCodecID id), (id))                                                    \
    X(kAvCodec, avcodec_get_name, (enum AVCodecID id), (id))                                                        \
    X(kAvCodec, avcodec_alloc_context3, (const AVCodec* codec), (codec))                                            \
    X(kAvCodec, avcodec_free_context, (AVCodecContext** avctx), (avctx))                                            \
    X(kAvCodec, avcodec_parameters_to_context, (AVCodecContext* codec, const AVCodecParameters* par), (codec, par)) \
    X(kAvCodec, avcodec_open2, (AVCodecContext* avctx, const AVCodec* codec, AVDictionary** options),               \
      (avctx, codec, options))                                                                                      \
    X(kAvCodec, avcodec_send_packet, (AVCodecContext* avctx, const AVPacket* avpkt), (avctx, avpkt))                \
    X(kAvCodec, avcodec_receive_frame, (AVCodecContext* avctx, AVFrame* frame), (avctx, frame))                     \
    X(kAvCodec, av_packet_alloc, (void), ())                                                                        \
    X(kAvCodec, av_packet_free, (AVPacket** pkt), (pkt))                                                            \
    X(kAvCodec, av_packet_unref, (AVPacket* pkt), (pkt))                                                            \
    X(kAvCodec, av_new_packet, (AVPacket* pkt, int size), (pkt, size))                                              \
    X(kSwResample, swr_alloc_set_opts2, (struct SwrContext** ps, AVChannelLayout* out_ch_layout,                    \
                                         enum AVSampleFormat out_sample_fmt, int out_sample_rate,                   \
                                         AVChannelLayout* in_ch_layout, enum AVSampleFormat in_sample_fmt,          \
                                         int in_sample_rate, int log_offset, void* log_ctx),                        \
      (ps, out_ch_layout, out_sample_fmt, out_sample_rate, in_ch_layout, in_sample_fmt, in_sample_rate, log_offset, \
       log_ctx))                                                                                                    \
    X(kSwResample, swr_init, (struct SwrContext* s), (s))                                                           \
    X(kSwResample, swr_free, (struct SwrContext** s), (s))                                                          \
    X(kSwResample, swr_set_matrix, (struct SwrContext* s, const double* matrix, int stride), (s, matrix, stride))   \
    X(kSwResample, swr_get_out_samples, (struct SwrContext* s, int in_samples), (s, in_samples))                    \
    X(kSwResample, swr_convert, (struct SwrContext* s, uint8_t** out, int out_count, const uint8_t** in,            \
                                 int in_count), (s, out, out_count, in, in_count))                                  \
    X(kAvUtil, av_frame_alloc, (void), ())                                                                          \
    X(kAvUtil, av_frame_free, (AVFrame** frame), (frame))                                                           \
    X(kAvUtil, av_frame_unref, (AVFrame* frame), (frame))                                                           \
    X(kAvUtil, av_channel_layout_default, (AVChannelLayout* ch_layout, int nb_channels), (ch_layout, nb_channels))  \
    X(kAvUtil, av_channel_layout_uninit, (AVChannelLayout* channel_layout), (channel_layout))                       \
    X(kAvUtil, av_dict_get, (const AVDictionary* m, const char* key, const AVDictionaryEntry* prev, int flags),     \
      (m, key, prev, flags))                                                                                        \
    X(kAvUtil, av_dict_set, (AVDictionary** pm, const char* key, const char* value, int flags),                     \
      (pm, key, value, flags))                                                                                      \
    X(kAvUtil, av_dict_free, (AVDictionary** m), (m))                                                               \
    X(kAvUtil, av_parse_time, (int64_t* timeval, const char* timestr, int duration), (timeval, timestr, duration))  \
    X(kAvUtil, av_rescale_q, (int64_t a, AVRational bq, AVRational cq), (a, bq, cq))                                \
    X(kAvUtil, av_strerror, (int errnum, char* errbuf, size_t errbuf_size), (errnum, errbuf, errbuf_size))          \
    X(kAvUtil, av_log_set_level, (int level), (level))

enum Function : size_t { VD_FFMPEG_FUNCTIONS(VD_LAZY_INDEX) kFunctionCount };
constexpr platform::LazySymbol kSymbols[] = {VD_FFMPEG_FUNCTIONS(VD_LAZY_SYMBOL)};
static_assert(std::size(kSymbols) == kFunctionCount);

void* gAddresses[kFunctionCount];
constinit platform::LazyLibraries gFfmpeg(kSonames, kSymbols, gAddresses, "VANDREL_MEDIA_LAYER");

}  // namespace

Status StartFfmpeg() {
    static std::once_flag quieted;
    const std::string_view problem = gFfmpeg.Load();
    if (!problem.empty()) return MediaFailure(util::kNoCodec, "FFmpeg cannot be loaded: " + std::string(problem));
    // FFmpeg prints its warnings to the standard error of the process, which is the host's; a
    // plug-in keeps quiet there and reports through its status codes and detail texts instead.
    std::call_once(quieted, [] { av_log_set_level(AV_LOG_QUIET); });
    return util::kNoError;
}

}  // namespace vd::media

#define VD_FORWARDER(library, name, parameters, arguments) \
    VD_LAZY_FORWARDER(vd::media::gFfmpeg, vd::media, name, parameters, arguments)
VD_FFMPEG_FUNCTIONS(VD_FORWARDER)
#undef VD_FORWARDER
