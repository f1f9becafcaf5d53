// The bytes go to the decoder in packets of whole codec packets, so decoders that take one block
// per call ('ima4') and those that take any run ('ulaw') are fed alike; a trailing part packet is
// dropped, as a player would.
#include "platform/media/memory_sound_decoder.h"

#include "platform/media/av_owners.h"
#include "platform/media/decoder_session.h"
#include "platform/media/ffmpeg_functions.h"

#include <algorithm>
#include <new>

namespace vd::media {

namespace {

struct Codec {
    FourCharCode format;
    AVCodecID id;
    CompressedPacket packet;
};

constexpr Codec kCodecs[] = {
    {FourCC("ima4"), AV_CODEC_ID_ADPCM_IMA_QT, {34, 64}},
    {FourCC("MAC3"), AV_CODEC_ID_MACE3, {2, 6}},
    {FourCC("MAC6"), AV_CODEC_ID_MACE6, {1, 6}},
    {FourCC("ulaw"), AV_CODEC_ID_PCM_MULAW, {1, 1}},
    {FourCC("alaw"), AV_CODEC_ID_PCM_ALAW, {1, 1}},
};

const Codec* Find(FourCharCode format) {
    for (const Codec& c : kCodecs)
        if (c.format == format) return &c;
    return nullptr;
}

// Codec packets (per channel) handed to the decoder at once.
constexpr size_t kPacketsPerCall = 1024;

struct Decoding : DecoderSession {
    int channels = 0;
};

Status Collect(Decoding& d, std::vector<int16_t>& out) {
    for (;;) {
        int rc = avcodec_receive_frame(d.codec.get(), d.frame.get());
        if (rc == AVERROR(EAGAIN) || rc == AVERROR_EOF) return util::kNoError;
        if (rc < 0) return StatusFromAvError(rc, MediaStep::kReading);
        AVFrame* frame = d.frame.get();
        if (Status s = d.MakeConverter(d.channels, AV_SAMPLE_FMT_S16)) return s;
        const size_t at = out.size();
        try {
            out.resize(at + size_t(frame->nb_samples) * size_t(d.channels));
        } catch (const std::bad_alloc&) {
            av_frame_unref(frame);
            return MediaFailure(util::kMemoryFull, "no memory for decoded samples");
        }
        uint8_t* plane = reinterpret_cast<uint8_t*>(out.data() + at);
        const int converted = swr_convert(d.converter.get(), &plane, frame->nb_samples,
                                          const_cast<const uint8_t**>(frame->extended_data), frame->nb_samples);
        av_frame_unref(frame);
        if (converted < 0) {
            out.resize(at);
            return StatusFromAvError(converted, MediaStep::kReading);
        }
        out.resize(at + size_t(converted) * size_t(d.channels));
    }
}

}  // namespace

bool CompressedPacketOf(FourCharCode format, CompressedPacket& packet) {
    const Codec* c = Find(format);
    if (c) packet = c->packet;
    return c != nullptr;
}

Status DecodeSoundBytes(FourCharCode format, int channels, int rate, const uint8_t* bytes, size_t size,
                        std::vector<int16_t>& out) {
    out.clear();
    const Codec* c = Find(format);
    if (!c) return MediaFailure(util::kNoCodec, "no decoder for '" + FourCCText(format) + "' samples in memory");
    if (channels < 1 || channels > 8 || rate < 1) return MediaFailure(util::kBadParameter, "a sound with no channels or rate");
    if (Status s = StartFfmpeg()) return s;
    const AVCodec* decoder = avcodec_find_decoder(c->id);
    if (!decoder) return MediaFailure(util::kNoCodec, std::string("this FFmpeg has no ") + avcodec_get_name(c->id) + " decoder");
    Decoding d;
    d.channels = channels;
    if (Status s = d.Allocate(decoder)) return s;
    d.codec->sample_rate = rate;
    av_channel_layout_default(&d.codec->ch_layout, channels);
    const size_t block = c->packet.bytes * size_t(channels);
    d.codec->block_align = int(block);
    int rc = avcodec_open2(d.codec.get(), decoder, nullptr);
    if (rc < 0) return StatusFromAvError(rc, MediaStep::kReading);

    const size_t whole = size / block * block;
    for (size_t at = 0; at < whole;) {
        const size_t take = std::min(whole - at, block * kPacketsPerCall);
        if ((rc = av_new_packet(d.packet.get(), int(take))) < 0) return StatusFromAvError(rc, MediaStep::kReading);
        std::copy(bytes + at, bytes + at + take, d.packet->data);
        rc = avcodec_send_packet(d.codec.get(), d.packet.get());
        av_packet_unref(d.packet.get());
        if (rc < 0 && rc != AVERROR(EAGAIN)) return StatusFromAvError(rc, MediaStep::kReading);
        if (Status s = Collect(d, out)) return s;
        at += take;
    }
    avcodec_send_packet(d.codec.get(), nullptr);
    if (Status s = Collect(d, out)) return s;
    if (out.empty() && whole > 0) return MediaFailure(util::kBadSoundFileFormat, "no sound could be decoded");
    return util::kNoError;
}

}  // namespace vd::media
