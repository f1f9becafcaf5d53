#include "platform/media/sound_export.h"

#include "platform/media/av_owners.h"
#include "platform/media/block_source.h"
#include "platform/media/exporter_table.h"
#include "platform/media/ffmpeg_functions.h"
#include "platform/media/movie_from_file.h"
#include "platform/media/packet_decoder.h"
#include "platform/media/pending_file.h"
#include "platform/media/sound_converter.h"

extern "C" {
#include <libavutil/channel_layout.h>
#include <libavutil/intreadwrite.h>
}

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <new>
#include <vector>

namespace vd::media {

namespace {

struct Resolved {
    const ExporterRow* row = nullptr;
    const AVCodec* encoder = nullptr;
    int rate = 0;
    int channels = 0;
    int sampleSize = 16;
};

// The rate the encoder takes that is nearest to the wanted one (the higher of two as near).
int NearestRate(const AVCodec& encoder, int wanted) {
    if (!encoder.supported_samplerates) return wanted;
    int best = 0;
    for (const int* r = encoder.supported_samplerates; *r; ++r) {
        const int distance = std::abs(*r - wanted), bestDistance = std::abs(best - wanted);
        if (best == 0 || distance < bestDistance || (distance == bestDistance && *r > best)) best = *r;
    }
    return best;
}

Status Resolve(const Movie& movie, const ExportSettings& settings, Resolved& out) {
    out.row = ExporterRowFor(settings.subtype);
    if (!out.row) return MediaFailure(util::kNoComponent, "no sound exporter of type '" + FourCCText(settings.subtype) + "'");
    const Track* track = movie.FirstSoundTrack();
    if (!track || track->media.Descriptions().empty()) return MediaFailure(util::kNoSoundTrack, "the movie has no sound");
    ExportSettings s = settings;
    if (s.sampleSize == 0) s.sampleSize = 16;
    out.sampleSize = s.sampleSize;
    const char* name = EncoderNameFor(*out.row, s);
    if (!name)
        return MediaFailure(util::kBadParameter, std::string(out.row->name) + " files cannot hold " +
                                                     std::to_string(s.sampleSize) + "-bit samples");
    out.encoder = avcodec_find_encoder_by_name(name);
    if (!out.encoder) return MediaFailure(util::kNoComponent, std::string("no encoder ") + name);
    const int sourceChannels = track->media.Descriptions().front().numberOfChannels;
    out.channels = s.channels > 0 ? s.channels : std::clamp(sourceChannels, 1, 2);
    if (out.channels > 2) return MediaFailure(util::kBadParameter, "sound files are written mono or stereo");
    out.rate = NearestRate(*out.encoder, s.sampleRate > 0 ? s.sampleRate : track->media.timeScale);
    if (out.rate <= 0) return MediaFailure(util::kBadParameter, "no sample rate to write");
    return util::kNoError;
}

// The encoder's sample format nearest to our 16-bit mix: 8-bit for encoders that take only that,
// integers of 16 or 32 bits (24-bit encoders take theirs in 32), else floats. FillFrame fills
// each of these.
AVSampleFormat PickSampleFormat(const AVCodec& encoder, int sampleSize) {
    const AVSampleFormat preferred[] = {sampleSize > 16 ? AV_SAMPLE_FMT_S32 : AV_SAMPLE_FMT_S16,
                                        sampleSize > 16 ? AV_SAMPLE_FMT_S32P : AV_SAMPLE_FMT_S16P,
                                        AV_SAMPLE_FMT_S16, AV_SAMPLE_FMT_S16P, AV_SAMPLE_FMT_FLT, AV_SAMPLE_FMT_FLTP,
                                        AV_SAMPLE_FMT_U8};
    if (!encoder.sample_fmts) return AV_SAMPLE_FMT_S16;
    for (const AVSampleFormat want : preferred)
        for (const AVSampleFormat* f = encoder.sample_fmts; *f != AV_SAMPLE_FMT_NONE; ++f)
            if (*f == want) return want;
    return AV_SAMPLE_FMT_NONE;
}

// Interleaved 16-bit frames into the frame's own layout and format.
void FillFrame(const int16_t* in, int frames, int channels, AVFrame& frame) {
    const auto format = AVSampleFormat(frame.format);
    const size_t n = size_t(frames) * size_t(channels);
    switch (format) {
        case AV_SAMPLE_FMT_S16:
            std::memcpy(frame.data[0], in, n * sizeof(int16_t));
            return;
        case AV_SAMPLE_FMT_S32: {
            auto* out = reinterpret_cast<int32_t*>(frame.data[0]);
            for (size_t i = 0; i < n; ++i) out[i] = int32_t(in[i]) * 65536;
            return;
        }
        case AV_SAMPLE_FMT_FLT: {
            auto* out = reinterpret_cast<float*>(frame.data[0]);
            for (size_t i = 0; i < n; ++i) out[i] = float(in[i]) * (1.0f / 32768.0f);
            return;
        }
        case AV_SAMPLE_FMT_U8:  // the high byte, offset to unsigned, as 8-bit WAV files keep it
            for (size_t i = 0; i < n; ++i) frame.data[0][i] = uint8_t((in[i] >> 8) + 128);
            return;
        default:
            break;
    }
    for (int c = 0; c < channels; ++c) {
        const int16_t* from = in + c;
        if (format == AV_SAMPLE_FMT_S16P) {
            auto* out = reinterpret_cast<int16_t*>(frame.extended_data[c]);
            for (int i = 0; i < frames; ++i) out[i] = from[size_t(i) * size_t(channels)];
        } else if (format == AV_SAMPLE_FMT_S32P) {
            auto* out = reinterpret_cast<int32_t*>(frame.extended_data[c]);
            for (int i = 0; i < frames; ++i) out[i] = int32_t(from[size_t(i) * size_t(channels)]) * 65536;
        } else {
            auto* out = reinterpret_cast<float*>(frame.extended_data[c]);
            for (int i = 0; i < frames; ++i) out[i] = float(from[size_t(i) * size_t(channels)]) * (1.0f / 32768.0f);
        }
    }
}

Status OpenEncoder(const Resolved& r, const ExportSettings& settings, bool globalHeader, CodecContextPtr& codec) {
    codec.reset(avcodec_alloc_context3(r.encoder));
    if (!codec) return MediaFailure(util::kMemoryFull, "no memory for an encoder");
    AVCodecContext& c = *codec;
    c.sample_rate = r.rate;
    c.time_base = AVRational{1, r.rate};
    av_channel_layout_default(&c.ch_layout, r.channels);
    c.sample_fmt = PickSampleFormat(*r.encoder, r.sampleSize);
    if (c.sample_fmt == AV_SAMPLE_FMT_NONE)
        return MediaFailure(util::kNoCodec, std::string("the encoder ") + r.encoder->name + " takes no samples we make");
    if (r.sampleSize == 24) c.bits_per_raw_sample = 24;
    switch (r.row->family) {
        case EncoderFamily::kAac:
        case EncoderFamily::kOpus:
            if (settings.bitRate > 0) c.bit_rate = settings.bitRate;
            break;
        case EncoderFamily::kMp3:
            if (settings.bitRate > 0) {
                c.bit_rate = settings.bitRate;
            } else {
                c.flags |= AV_CODEC_FLAG_QSCALE;
                c.global_quality = FF_QP2LAMBDA * std::clamp(settings.quality < 0 ? 4 : settings.quality, 0, 9);
            }
            break;
        case EncoderFamily::kVorbis:
            c.flags |= AV_CODEC_FLAG_QSCALE;
            c.global_quality = FF_QP2LAMBDA * std::clamp(settings.quality < 0 ? 4 : settings.quality, 0, 10);
            break;
        case EncoderFamily::kFlac:
            if (settings.compressionLevel >= 0) c.compression_level = std::min(settings.compressionLevel, 12);
            break;
        default:
            break;
    }
    if (globalHeader) c.flags |= AV_CODEC_FLAG_GLOBAL_HEADER;
    const int rc = avcodec_open2(&c, r.encoder, nullptr);
    if (rc < 0) return StatusFromAvError(rc, MediaStep::kWriting);
    return util::kNoError;
}

// The file a muxer writes, through FFmpeg's own I/O on the pending file's name.
struct Output {
    OutputFormatPtr format;
    AVStream* stream = nullptr;
};

Status OpenOutput(const ExporterRow& row, const std::string& path, Output& out) {
    AVFormatContext* raw = nullptr;
    int rc = avformat_alloc_output_context2(&raw, nullptr, row.muxer, path.c_str());
    if (rc < 0 || !raw) return StatusFromAvError(rc < 0 ? rc : AVERROR(ENOMEM), MediaStep::kWriting);
    out.format.reset(raw);
    // The same sound and settings make the same file, byte for byte: no random stream serial
    // (Ogg), no library version in the tags.
    raw->flags |= AVFMT_FLAG_BITEXACT;
    out.stream = avformat_new_stream(raw, nullptr);
    if (!out.stream) return MediaFailure(util::kMemoryFull, "no memory for an output stream");
    return util::kNoError;
}

// Everything of one conversion, released in the right order on every path: the file's I/O is
// closed before the pending file is committed or removed.
class Conversion {
public:
    Conversion(const Movie& movie, const ExportSettings& settings) : movie_(movie), settings_(settings) {}
    ~Conversion() {
        if (output_.format && output_.format->pb) avio_closep(&output_.format->pb);
    }

    Status Run(const std::string& target, const StoredSoundRequest* stored) {
        if (Status s = StartFfmpeg()) return s;
        if (Status s = Resolve(movie_, settings_, r_)) return s;
        std::unique_ptr<MixedBlockSource> source;
        OutputFormat mix;
        mix.sampleRate = r_.rate;
        mix.channels = int16_t(r_.channels);
        if (Status s = MixedBlockSource::Open(movie_, mix, {}, source)) return s;
        if (Status s = pending_.Create(target)) return s;
        if (Status s = OpenOutput(*r_.row, pending_.TemporaryPath(), output_)) return s;
        const bool globalHeader = output_.format->oformat->flags & AVFMT_GLOBALHEADER;
        if (Status s = OpenEncoder(r_, settings_, globalHeader, codec_)) return s;
        AVStream& stream = *output_.stream;
        int rc = avcodec_parameters_from_context(stream.codecpar, codec_.get());
        if (rc < 0) return StatusFromAvError(rc, MediaStep::kWriting);
        stream.time_base = codec_->time_base;
        decoding_ = stored && NeedsDecodingToRead();
        keepMono8_ = decoding_ && stored->rate == r_.rate;
        if (decoding_) {
            prefix_ = stored->out->size();
            const auto keep = keepMono8_ ? PacketDecoder::Keep::kMono8 : PacketDecoder::Keep::kFloats;
            if (Status s = decoder_.Start(*stream.codecpar, r_.channels, StatedMixFrames(movie_, mix), keep,
                                          keepMono8_ ? std::move(*stored->out) : std::vector<uint8_t>()))
                return s;
        }
        if ((rc = avio_open(&output_.format->pb, pending_.TemporaryPath().c_str(), AVIO_FLAG_WRITE)) < 0)
            return StatusFromAvError(rc, MediaStep::kWriting);
        if ((rc = avformat_write_header(output_.format.get(), nullptr)) < 0)
            return StatusFromAvError(rc, MediaStep::kWriting);
        if (Status s = Encode(*source)) return s;
        if ((rc = av_write_trailer(output_.format.get())) < 0) return StatusFromAvError(rc, MediaStep::kWriting);
        if ((rc = avio_closep(&output_.format->pb)) < 0) return StatusFromAvError(rc, MediaStep::kWriting);
        PredecodedSound decoded;
        std::vector<uint8_t> mono8;
        if (decoding_)
            if (Status s = decoder_.Finish(decoded, mono8)) return s;
        if (Status s = pending_.Commit()) return s;
        if (!stored) return util::kNoError;
        if (keepMono8_) return StoreMono8(target, std::move(mono8), *stored);
        Movie written;
        if (decoding_) {
            if (Status s = TrimToWhatTheFilePlays(target, decoded)) return s;
            if (Status s = MovieFromFile(target, written, OpenOptions{&decoded})) return s;
        } else if (Status s = MovieFromFile(target, written)) {
            return s;
        }
        const Track* track = written.FirstSoundTrack();
        if (!track) return MediaFailure(util::kNoSoundTrack, "the written file holds no sound");
        return ConvertToMono8(track->media, stored->rate, stored->maxBytes, *stored->out);
    }

private:
    // PCM in its own sound file is read from the file as it is; everything else is decoded.
    bool NeedsDecodingToRead() const {
        const std::string_view muxer = r_.row->muxer;
        return r_.row->family != EncoderFamily::kPcm || !(muxer == "wav" || muxer == "aiff" || muxer == "caf");
    }

    // A reader of the file does not hear the encoder's priming samples nor its padding at the
    // end. When the encoder marked them in its packets (LAME, Opus) the decoder has already left
    // them out, as it does reading the file; otherwise the container tells the reader (an MP4
    // edit list, Ogg granule positions), and the file's packets carry the same marks for us.
    Status TrimToWhatTheFilePlays(const std::string& path, PredecodedSound& decoded) const {
        int64_t skip = 0, kept = 0;
        if (Status s = FramesTheFilePlays(path, decoded.Frames(), skip, kept)) return s;
        decoded.skipped = skip;
        decoded.kept = kept;
        return util::kNoError;
    }

    // Of `decoded` frames, the first that a reader of the file hears and how many follow.
    Status FramesTheFilePlays(const std::string& path, int64_t decoded, int64_t& first, int64_t& kept) const {
        // An encoder without priming (FLAC, PCM) gives the container nothing to mark; reading the
        // marks would cost a pass over the file.
        int64_t skip = 0, discard = 0;
        if (!decoder_.MarkedSkippedSamples() && codec_->initial_padding > 0)
            if (Status s = SkipMarksOfFile(path, skip, discard)) return s;
        first = std::min(skip, decoded);
        kept = std::max<int64_t>(0, decoded - first - discard);
        return util::kNoError;
    }

    // The 8-bit frames decoded while encoding (after the prefix the request's vector held), cut
    // to what ConvertToMono8 would read of the file: the frames it plays, no more than its
    // container states.
    Status StoreMono8(const std::string& path, std::vector<uint8_t>&& mono8, const StoredSoundRequest& stored) const {
        const size_t prefix = prefix_;
        int64_t first = 0, kept = 0, stated = 0;
        if (Status s = FramesTheFilePlays(path, int64_t(mono8.size() - prefix), first, kept)) return s;
        if (Status s = StatedSoundFrames(path, kept, stated)) return s;
        if (stated < 0 || uint64_t(stated) > stored.maxBytes)
            return SoundTooLarge("the sound is too long to store in a container");
        const int64_t frames = std::min(stated, kept);
        if (first > 0)
            mono8.erase(mono8.begin() + std::ptrdiff_t(prefix), mono8.begin() + std::ptrdiff_t(prefix + size_t(first)));
        mono8.resize(prefix + size_t(frames));
        *stored.out = std::move(mono8);
        return util::kNoError;
    }

    // The samples a reader of the file skips at its start and leaves out at its end, from the
    // marks the demuxer gives its packets. Reading packets costs no decoding.
    static Status SkipMarksOfFile(const std::string& path, int64_t& skip, int64_t& discard) {
        AVFormatContext* raw = nullptr;  // avformat_open_input frees it on failure
        int rc = avformat_open_input(&raw, path.c_str(), nullptr, nullptr);
        if (rc < 0) return StatusFromAvError(rc, MediaStep::kOpening);
        InputFormatPtr format(raw);
        PacketPtr packet(av_packet_alloc());
        if (!packet) return MediaFailure(util::kMemoryFull, "no memory to read the written file");
        while ((rc = av_read_frame(raw, packet.get())) >= 0) {
            size_t size = 0;
            const uint8_t* mark = av_packet_get_side_data(packet.get(), AV_PKT_DATA_SKIP_SAMPLES, &size);
            if (mark && size >= 8) {
                skip += int64_t(AV_RL32(mark));
                discard = int64_t(AV_RL32(mark + 4));  // only the last packet's end counts
            } else {
                discard = 0;
            }
            av_packet_unref(packet.get());
        }
        if (rc != AVERROR_EOF) return StatusFromAvError(rc, MediaStep::kReading);
        return util::kNoError;
    }

    Status Write(AVPacket* packet) {
        if (decoding_)
            if (Status s = decoder_.Feed(*packet)) return s;
        av_packet_rescale_ts(packet, codec_->time_base, output_.stream->time_base);
        packet->stream_index = output_.stream->index;
        const int rc = av_interleaved_write_frame(output_.format.get(), packet);
        if (rc < 0) return StatusFromAvError(rc, MediaStep::kWriting);
        return util::kNoError;
    }

    Status Drain(AVPacket* packet) {
        for (;;) {
            const int rc = avcodec_receive_packet(codec_.get(), packet);
            if (rc == AVERROR(EAGAIN) || rc == AVERROR_EOF) return util::kNoError;
            if (rc < 0) return StatusFromAvError(rc, MediaStep::kWriting);
            const Status s = Write(packet);
            av_packet_unref(packet);
            if (s) return s;
        }
    }

    Status Encode(MixedBlockSource& source) {
        const bool anySize = (r_.encoder->capabilities & AV_CODEC_CAP_VARIABLE_FRAME_SIZE) || codec_->frame_size <= 0;
        const int frameSize = anySize ? 4096 : codec_->frame_size;
        PacketPtr packet(av_packet_alloc());
        FramePtr frame(av_frame_alloc());
        if (!packet || !frame) return MediaFailure(util::kMemoryFull, "no memory to encode");
        std::vector<int16_t> block;
        try {
            block.resize(size_t(frameSize) * size_t(r_.channels));
        } catch (const std::bad_alloc&) {
            return MediaFailure(util::kMemoryFull, "no memory to encode");
        }
        // One frame's buffers serve every block; an encoder that still holds them makes us copy first.
        frame->format = codec_->sample_fmt;
        frame->sample_rate = r_.rate;
        frame->nb_samples = frameSize;
        int rc = av_channel_layout_copy(&frame->ch_layout, &codec_->ch_layout);
        if (rc >= 0) rc = av_frame_get_buffer(frame.get(), 0);
        if (rc < 0) return StatusFromAvError(rc, MediaStep::kWriting);
        for (;;) {
            if (Status s = StopRequestStatus()) return s;
            if ((rc = av_frame_make_writable(frame.get())) < 0) return StatusFromAvError(rc, MediaStep::kWriting);
            // Interleaved 16-bit samples, what most PCM and FLAC encoders take, go straight into the frame.
            const bool direct = codec_->sample_fmt == AV_SAMPLE_FMT_S16;
            size_t frames = 0;
            if (Status s = source.Read(direct ? reinterpret_cast<int16_t*>(frame->data[0]) : block.data(),
                                       size_t(frameSize), frames))
                return s;
            if (frames == 0) break;
            frame->nb_samples = int(frames);
            if (!direct) FillFrame(block.data(), int(frames), r_.channels, *frame);
            frame->pts = framesIn_;
            framesIn_ += int64_t(frames);
            if ((rc = avcodec_send_frame(codec_.get(), frame.get())) < 0) return StatusFromAvError(rc, MediaStep::kWriting);
            if (Status s = Drain(packet.get())) return s;
            if (frames < size_t(frameSize)) break;
        }
        if ((rc = avcodec_send_frame(codec_.get(), nullptr)) < 0) return StatusFromAvError(rc, MediaStep::kWriting);
        return Drain(packet.get());
    }

    const Movie& movie_;
    const ExportSettings& settings_;
    Resolved r_;
    PendingFile pending_;
    Output output_;
    CodecContextPtr codec_;
    PacketDecoder decoder_;
    bool decoding_ = false;
    bool keepMono8_ = false;
    size_t prefix_ = 0;  // bytes the request's vector held before the sound
    int64_t framesIn_ = 0;
};

}  // namespace

Status ExportSound(const Movie& movie, const ExportSettings& settings, const std::string& target,
                   const StoredSoundRequest* stored) {
    try {
        Conversion conversion(movie, settings);
        return conversion.Run(target, stored);
    } catch (const std::bad_alloc&) {
        return MediaFailure(util::kMemoryFull, "no memory to convert the sound");
    }
}

}  // namespace vd::media
