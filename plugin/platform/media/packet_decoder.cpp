#include "platform/media/packet_decoder.h"

#include "platform/media/ffmpeg_functions.h"
#include "platform/common/fresh_memory.h"
#include "platform/media/sound_converter.h"

#include <algorithm>
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

Status PacketDecoder::Start(const AVCodecParameters& parameters, int channels, int64_t expectedFrames, Keep keep,
                            std::vector<uint8_t>&& mono8Prefix) {
    const AVCodec* decoder = avcodec_find_decoder(parameters.codec_id);
    if (!decoder) return MediaFailure(util::kNoCodec, std::string("no decoder for ") + avcodec_get_name(parameters.codec_id));
    auto session = std::make_unique<DecoderSession>();
    if (Status s = session->Allocate(decoder)) return s;
    int rc = avcodec_parameters_to_context(session->codec.get(), &parameters);
    if (rc >= 0) rc = avcodec_open2(session->codec.get(), decoder, nullptr);
    if (rc < 0) return StatusFromAvError(rc, MediaStep::kReading);
    session_ = std::move(session);
    sound_.channels = channels;
    keep_ = keep;
    const size_t room = size_t(std::max<int64_t>(0, expectedFrames) + 16384);
    if (keep == Keep::kFloats) {
        sound_.samples.Reserve(room * size_t(channels));
    } else {
        try {
            mono8_ = std::move(mono8Prefix);
            mono8_.reserve(mono8_.size() + room);
            platform::AdviseHugePages(mono8_.data(), mono8_.capacity());
        } catch (const std::bad_alloc&) {
            return MediaFailure(util::kMemoryFull, "no memory for the decoded sound");
        }
    }
    try {
        thread_ = std::thread([this] { Run(); });
    } catch (const std::system_error&) {
        return MediaFailure(util::kMemoryFull, "no thread to decode the written sound");
    }
    return util::kNoError;
}

// Packets are handed over in batches: waking a thread costs more on a virtual machine than
// decoding a packet, and the decoder has no reason to keep pace packet by packet.
constexpr size_t kBatchPackets = 64;

Status PacketDecoder::Feed(const AVPacket& packet) {
    markedSkip_ |= av_packet_get_side_data(&packet, AV_PKT_DATA_SKIP_SAMPLES, nullptr) != nullptr;
    PacketPtr copy(av_packet_clone(&packet));
    if (!copy) return MediaFailure(util::kMemoryFull, "no memory to copy an encoded packet");
    bool batchReady = false;
    try {
        std::lock_guard lock(mutex_);
        if (status_) return status_;
        queue_.push_back(std::move(copy));
        batchReady = queue_.size() == kBatchPackets;
    } catch (const std::bad_alloc&) {
        return MediaFailure(util::kMemoryFull, "no memory to queue an encoded packet");
    }
    if (batchReady) ready_.notify_one();
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
        if (keep_ == Keep::kMono8) {
            scratch_.clear();
            size_t frames = 0;
            if (Status s = d.AppendFloats(sound_.channels, scratch_, &frames)) return s;
            try {
                const size_t before = mono8_.size();
                mono8_.resize(before + frames);
                FloatFramesToMono8(scratch_.data(), frames, sound_.channels, mono8_.data() + before);
            } catch (const std::bad_alloc&) {
                return MediaFailure(util::kMemoryFull, "no memory for the decoded sound");
            }
            continue;
        }
        float* room = sound_.samples.Extend(size_t(d.frame->nb_samples) * size_t(sound_.channels));
        if (!room) {
            av_frame_unref(d.frame.get());
            return MediaFailure(util::kMemoryFull, "no memory for the decoded sound");
        }
        size_t frames = 0;
        if (Status s = d.ConvertInto(sound_.channels, room, &frames)) return s;
        sound_.samples.Commit(frames * size_t(sound_.channels));
    }
}

void PacketDecoder::Run() {
    std::deque<PacketPtr> batch;
    for (;;) {
        {
            std::unique_lock lock(mutex_);
            ready_.wait(lock, [this] { return stopped_ || ended_ || queue_.size() >= kBatchPackets; });
            if (stopped_) return;
            if (queue_.empty()) break;  // ended, and everything fed is decoded
            batch.swap(queue_);
        }
        for (PacketPtr& packet : batch) {
            if (Status s = DecodeOne(packet.get())) {
                std::lock_guard lock(mutex_);
                status_ = s;
                return;
            }
        }
        batch.clear();
    }
    Status s = DecodeOne(nullptr);  // what the decoder still holds
    std::lock_guard lock(mutex_);
    status_ = s;
}

Status PacketDecoder::Finish(PredecodedSound& sound, std::vector<uint8_t>& mono8) {
    {
        std::lock_guard lock(mutex_);
        ended_ = true;
    }
    ready_.notify_all();
    if (thread_.joinable()) thread_.join();
    if (status_) return status_;
    sound = std::move(sound_);
    mono8 = std::move(mono8_);
    return util::kNoError;
}

}  // namespace vd::media
