#include "platform/media/pcm_movie_writer.h"

#include "platform/media/av_owners.h"
#include "platform/media/ffmpeg_functions.h"

extern "C" {
#include <libavutil/channel_layout.h>
#include <libavutil/dict.h>
}

#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <new>
#include <vector>

namespace vd::media {

namespace {

AVCodecID CodecFor(int sampleSize) {
    switch (sampleSize) {
        case 8: return AV_CODEC_ID_PCM_S8;
        case 16: return AV_CODEC_ID_PCM_S16LE;
        case 24: return AV_CODEC_ID_PCM_S24LE;
        default: return AV_CODEC_ID_NONE;
    }
}

int32_t Quantize(float sample, int bits) {
    const double scale = double(int64_t(1) << (bits - 1));
    const double value = std::nearbyint(double(sample) * scale);
    return int32_t(std::clamp(value, -scale, scale - 1));
}

}  // namespace

struct PcmMovieWriter::Muxer {
    std::string path;
    OutputFormatPtr format;
    AVStream* stream = nullptr;
    PacketPtr packet;
    int channels = 0;
    int bytesPerSample = 0;

    ~Muxer() {
        if (format && format->pb) avio_closep(&format->pb);
    }
};

PcmMovieWriter::PcmMovieWriter(std::unique_ptr<Muxer> muxer) : muxer_(std::move(muxer)) {}

PcmMovieWriter::~PcmMovieWriter() = default;

Status PcmMovieWriter::Open(const std::string& path, int32_t rate, int channels, int sampleSize,
                            std::unique_ptr<PcmMovieWriter>& writer) {
    const AVCodecID codec = CodecFor(sampleSize);
    if (codec == AV_CODEC_ID_NONE)
        return MediaFailure(util::kBadParameter, "a recording holds 8, 16 or 24-bit samples, not " +
                                                     std::to_string(sampleSize));
    if (channels < 1 || channels > 2) return MediaFailure(util::kBadParameter, "a recording is mono or stereo");
    if (rate < 1000 || rate > 192000)
        return MediaFailure(util::kBadParameter, "a recording's rate is 1000 to 192000 Hz, not " + std::to_string(rate));
    if (Status s = StartFfmpeg()) return s;
    try {
        auto m = std::make_unique<Muxer>();
        m->path = path;
        m->channels = channels;
        m->bytesPerSample = sampleSize / 8;
        AVFormatContext* raw = nullptr;
        int rc = avformat_alloc_output_context2(&raw, nullptr, "mov", path.c_str());
        if (rc < 0 || !raw) return StatusFromAvError(rc < 0 ? rc : AVERROR(ENOMEM), MediaStep::kWriting);
        m->format.reset(raw);
        m->stream = avformat_new_stream(raw, nullptr);
        m->packet.reset(av_packet_alloc());
        if (!m->stream || !m->packet) return MediaFailure(util::kMemoryFull, "no memory for a recording");
        AVCodecParameters& par = *m->stream->codecpar;
        par.codec_type = AVMEDIA_TYPE_AUDIO;
        par.codec_id = codec;
        par.sample_rate = rate;
        av_channel_layout_default(&par.ch_layout, channels);
        par.bits_per_coded_sample = sampleSize;
        par.block_align = channels * m->bytesPerSample;
        m->stream->time_base = AVRational{1, rate};
        if ((rc = avio_open(&raw->pb, path.c_str(), AVIO_FLAG_WRITE)) < 0)
            return StatusFromAvError(rc, MediaStep::kWriting);
        // From here on a failure leaves a file we made: it goes.
        std::unique_ptr<Muxer, void (*)(Muxer*)> removeOnFailure(m.get(), [](Muxer* failed) {
            avio_closep(&failed->format->pb);
            ::unlink(failed->path.c_str());
        });
        // A movie of fragments, each cut when we say: the header written first holds no samples, and
        // everything flushed is complete on disk without the trailer.
        AVDictionary* options = nullptr;
        av_dict_set(&options, "movflags", "empty_moov+frag_custom", 0);
        rc = avformat_write_header(raw, &options);
        av_dict_free(&options);
        if (rc < 0) return StatusFromAvError(rc, MediaStep::kWriting);
        avio_flush(raw->pb);
        removeOnFailure.release();
        writer.reset(new PcmMovieWriter(std::move(m)));
        return util::kNoError;
    } catch (const std::bad_alloc&) {
        return MediaFailure(util::kMemoryFull, "no memory for a recording");
    }
}

Status PcmMovieWriter::Write(const float* samples, size_t frames) {
    if (finished_) return MediaFailure(util::kInvalidMovie, "the recording's file is already complete");
    if (frames == 0) return util::kNoError;
    Muxer& m = *muxer_;
    const size_t count = frames * size_t(m.channels);
    if (count * size_t(m.bytesPerSample) > size_t(1) << 30)
        return MediaFailure(util::kMemoryFull, "too many frames for one write");
    AVPacket& packet = *m.packet;
    int rc = av_new_packet(&packet, int(count * size_t(m.bytesPerSample)));
    if (rc < 0) return StatusFromAvError(rc, MediaStep::kWriting);
    uint8_t* out = packet.data;
    for (size_t i = 0; i < count; ++i) {
        const int32_t value = Quantize(samples[i], m.bytesPerSample * 8);
        for (int b = 0; b < m.bytesPerSample; ++b) *out++ = uint8_t(uint32_t(value) >> (8 * b));  // little-endian
    }
    packet.pts = packet.dts = framesWritten_;
    packet.duration = int64_t(frames);
    packet.stream_index = m.stream->index;
    // The muxer keeps our time base unless it chose another.
    av_packet_rescale_ts(&packet, AVRational{1, m.stream->codecpar->sample_rate}, m.stream->time_base);
    rc = av_write_frame(m.format.get(), &packet);
    av_packet_unref(&packet);
    if (rc < 0) return StatusFromAvError(rc, MediaStep::kWriting);
    framesWritten_ += int64_t(frames);
    return util::kNoError;
}

Status PcmMovieWriter::Flush() {
    if (finished_) return util::kNoError;
    AVFormatContext* format = muxer_->format.get();
    const int rc = av_write_frame(format, nullptr);  // cuts the fragment
    if (rc < 0) return StatusFromAvError(rc, MediaStep::kWriting);
    avio_flush(format->pb);
    if (format->pb->error < 0) return StatusFromAvError(format->pb->error, MediaStep::kWriting);
    return util::kNoError;
}

Status PcmMovieWriter::Finish() {
    if (finished_) return util::kNoError;
    finished_ = true;
    AVFormatContext* format = muxer_->format.get();
    int rc = av_write_trailer(format);
    if (rc < 0) return StatusFromAvError(rc, MediaStep::kWriting);
    if ((rc = avio_closep(&format->pb)) < 0) return StatusFromAvError(rc, MediaStep::kWriting);
    return util::kNoError;
}

}  // namespace vd::media
