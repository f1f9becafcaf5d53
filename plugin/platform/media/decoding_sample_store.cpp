#include "platform/media/decoding_sample_store.h"

#include "platform/media/av_owners.h"
#include "platform/media/decoder_session.h"
#include "platform/media/ffmpeg_functions.h"

#include <algorithm>
#include <cstring>
#include <new>

namespace vd::media {

struct DecodingSampleStore::Decoder : DecoderSession {
    InputFormatPtr format;
    bool draining = false;  // the demuxer is done; the decoder gives what it still holds
    bool ended = false;
};

DecodingSampleStore::DecodingSampleStore(std::string path, int streamIndex, int channels)
    : path_(std::move(path)), streamIndex_(streamIndex), channels_(channels) {}

DecodingSampleStore::~DecodingSampleStore() = default;

Status DecodingSampleStore::Restart() {
    if (Status s = StartFfmpeg()) return s;
    decoder_.reset();
    pending_.clear();
    pendingUsed_ = 0;
    nextFrame_ = 0;
    framesDecoded_ = 0;
    sawDamage_ = false;
    auto decoder = std::make_unique<Decoder>();

    AVFormatContext* raw = nullptr;  // avformat_open_input frees it on failure and nulls it
    int rc = avformat_open_input(&raw, path_.c_str(), nullptr, nullptr);
    if (rc < 0) return StatusFromAvError(rc, MediaStep::kReading);
    decoder->format.reset(raw);
    if ((rc = avformat_find_stream_info(raw, nullptr)) < 0) return StatusFromAvError(rc, MediaStep::kReading);
    if (streamIndex_ < 0 || unsigned(streamIndex_) >= raw->nb_streams)
        return MediaFailure(util::kInvalidMedia, path_ + " no longer has the sound stream");
    const AVCodecParameters* parameters = raw->streams[streamIndex_]->codecpar;
    const AVCodec* codec = avcodec_find_decoder(parameters->codec_id);
    if (!codec) return MediaFailure(util::kNoCodec, std::string("no decoder for ") + avcodec_get_name(parameters->codec_id));
    if (Status s = decoder->Allocate(codec)) return s;
    if ((rc = avcodec_parameters_to_context(decoder->codec.get(), parameters)) < 0 ||
        (rc = avcodec_open2(decoder->codec.get(), codec, nullptr)) < 0)
        return StatusFromAvError(rc, MediaStep::kReading);
    // Only our stream is demuxed; the others cost no reading.
    for (unsigned i = 0; i < raw->nb_streams; ++i)
        if (int(i) != streamIndex_) raw->streams[i]->discard = AVDISCARD_ALL;
    decoder_ = std::move(decoder);
    return util::kNoError;
}

Status DecodingSampleStore::DecodeMore(bool* ended) {
    *ended = false;
    Decoder& d = *decoder_;
    for (;;) {
        if (d.ended) {
            *ended = true;
            return util::kNoError;
        }
        int rc = avcodec_receive_frame(d.codec.get(), d.frame.get());
        if (rc == 0) break;
        if (rc == AVERROR_EOF) {
            d.ended = true;
            continue;
        }
        if (rc != AVERROR(EAGAIN)) {
            // A damaged frame: skip it as players do; the read fails only if nothing decodes.
            sawDamage_ = true;
            if (rc == AVERROR(ENOMEM)) return StatusFromAvError(rc, MediaStep::kReading);
            continue;
        }
        if (d.draining) {
            d.ended = true;  // the decoder asked for input after the final flush
            continue;
        }
        rc = av_read_frame(d.format.get(), d.packet.get());
        if (rc == AVERROR_EOF || (rc < 0 && rc != AVERROR(EAGAIN) && rc != AVERROR(ENOMEM))) {
            // The end of the file, or damage the demuxer cannot read past: decode what we hold.
            if (rc != AVERROR_EOF) sawDamage_ = true;
            d.draining = true;
            avcodec_send_packet(d.codec.get(), nullptr);
            continue;
        }
        if (rc < 0) return StatusFromAvError(rc, MediaStep::kReading);
        if (d.packet->stream_index == streamIndex_) {
            rc = avcodec_send_packet(d.codec.get(), d.packet.get());
            if (rc < 0 && rc != AVERROR(EAGAIN)) sawDamage_ = true;
        }
        av_packet_unref(d.packet.get());
    }

    // Drop what was handed out before growing, so pending_ holds about one frame at a time.
    pending_.erase(pending_.begin(), pending_.begin() + std::ptrdiff_t(pendingUsed_));
    pendingUsed_ = 0;
    size_t converted = 0;
    if (Status s = d.AppendFloats(channels_, pending_, &converted)) return s;
    framesDecoded_ += int64_t(converted);
    return util::kNoError;
}

Status DecodingSampleStore::ReadFloatFrames(int64_t firstFrame, int64_t frames, float* out, int64_t* framesRead) {
    *framesRead = 0;
    if (firstFrame < 0 || frames < 0) return MediaFailure(util::kInvalidTime, "negative sample range");
    if (!decoder_ || firstFrame < nextFrame_) {
        if (Status s = Restart()) return s;
    }
    const size_t channels = size_t(channels_);
    while (*framesRead < frames) {
        int64_t available = int64_t((pending_.size() - pendingUsed_) / channels);
        if (available > 0) {
            int64_t skip = std::min(available, std::max<int64_t>(0, firstFrame - nextFrame_));
            pendingUsed_ += size_t(skip) * channels;
            nextFrame_ += skip;
            available -= skip;
            int64_t take = std::min(available, frames - *framesRead);
            if (take > 0) {
                std::memcpy(out + size_t(*framesRead) * channels, pending_.data() + pendingUsed_,
                            size_t(take) * channels * sizeof(float));
                pendingUsed_ += size_t(take) * channels;
                nextFrame_ += take;
                *framesRead += take;
            }
            if (*framesRead == frames) break;
        }
        bool ended = false;
        if (Status s = DecodeMore(&ended)) return s;
        if (ended) break;
    }
    if (*framesRead == 0 && frames > 0 && framesDecoded_ == 0 && sawDamage_)
        return MediaFailure(util::kBadSoundFileFormat, path_ + ": no sound could be decoded");
    return util::kNoError;
}

Status DecodingSampleStore::CountFrames(int64_t& frames) {
    if (Status s = Restart()) return s;
    bool ended = false;
    while (!ended) {
        if (Status s = StopRequestStatus()) return s;
        if (Status s = DecodeMore(&ended)) return s;
        pending_.clear();
        pendingUsed_ = 0;
    }
    frames = framesDecoded_;
    if (frames == 0 && sawDamage_) return MediaFailure(util::kBadSoundFileFormat, path_ + ": no sound could be decoded");
    decoder_.reset();  // the next read starts from the beginning
    return util::kNoError;
}

}  // namespace vd::media
