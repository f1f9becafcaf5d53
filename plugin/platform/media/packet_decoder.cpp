#include "platform/media/packet_decoder.h"

#include "platform/media/ffmpeg_functions.h"

#include <new>

namespace vd::media {

PacketDecoder::~PacketDecoder() {
    {
        std::lock_guard lock(mutex_);
        stopped_ = true;
    }
    ready_.notify_all();
    if (thread_.joinable()) thread_.join();
}

Status PacketDecoder::Start(const AVCodecParameters& parameters, int channels) {
    const AVCodec* decoder = avcodec_find_decoder(parameters.codec_id);
    if (!decoder) return MediaFailure(util::kNoCodec, std::string("no decoder for ") + avcodec_get_name(parameters.codec_id));
    auto session = std::make_unique<DecoderSession>();
    if (Status s = session->Allocate(decoder)) return s;
    int rc = avcodec_parameters_to_context(session->codec.get(), &parameters);
    if (rc >= 0) rc = avcodec_open2(session->codec.get(), decoder, nullptr);
    if (rc < 0) return StatusFromAvError(rc, MediaStep::kReading);
    session_ = std::move(session);
    sound_.channels = channels;
    try {
        thread_ = std::thread([this] { Run(); });
    } catch (const std::system_error&) {
        return MediaFailure(util::kMemoryFull, "no thread to decode the written sound");
    }
    return util::kNoError;
}

Status PacketDecoder::Feed(const AVPacket& packet) {
    markedSkip_ |= av_packet_get_side_data(&packet, AV_PKT_DATA_SKIP_SAMPLES, nullptr) != nullptr;
    PacketPtr copy(av_packet_clone(&packet));
    if (!copy) return MediaFailure(util::kMemoryFull, "no memory to copy an encoded packet");
    try {
        std::lock_guard lock(mutex_);
        if (status_) return status_;
        queue_.push_back(std::move(copy));
    } catch (const std::bad_alloc&) {
        return MediaFailure(util::kMemoryFull, "no memory to queue an encoded packet");
    }
    ready_.notify_one();
    return util::kNoError;
}

// A packet the decoder refuses, or a frame it cannot decode, is skipped as the decoding store
// skips damage, so both give the same sound.
Status PacketDecoder::DecodeOne(AVPacket* packet) {
    DecoderSession& d = *session_;
    avcodec_send_packet(d.codec.get(), packet);
    for (;;) {
        const int rc = avcodec_receive_frame(d.codec.get(), d.frame.get());
        if (rc == AVERROR(EAGAIN) || rc == AVERROR_EOF) return util::kNoError;
        if (rc == AVERROR(ENOMEM)) return StatusFromAvError(rc, MediaStep::kReading);
        if (rc < 0) continue;
        size_t frames = 0;
        if (Status s = d.AppendFloats(sound_.channels, sound_.samples, &frames)) return s;
    }
}

void PacketDecoder::Run() {
    for (;;) {
        PacketPtr packet;
        {
            std::unique_lock lock(mutex_);
            ready_.wait(lock, [this] { return stopped_ || ended_ || !queue_.empty(); });
            if (stopped_) return;
            if (queue_.empty()) break;  // ended, and everything fed is decoded
            packet = std::move(queue_.front());
            queue_.pop_front();
        }
        if (Status s = DecodeOne(packet.get())) {
            std::lock_guard lock(mutex_);
            status_ = s;
            return;
        }
    }
    Status s = DecodeOne(nullptr);  // what the decoder still holds
    std::lock_guard lock(mutex_);
    status_ = s;
}

Status PacketDecoder::Finish(PredecodedSound& sound) {
    {
        std::lock_guard lock(mutex_);
        ended_ = true;
    }
    ready_.notify_all();
    if (thread_.joinable()) thread_.join();
    if (status_) return status_;
    sound = std::move(sound_);
    return util::kNoError;
}

}  // namespace vd::media
