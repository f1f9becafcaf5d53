#include "platform/media/reference_movie_writer.h"

#include "platform/common/unique_fd.h"
#include "platform/media/atom_builder.h"
#include "platform/media/demuxer_open.h"
#include "platform/media/ffmpeg_functions.h"
#include "platform/media/mac_time.h"
#include "platform/media/pending_file.h"

#include <algorithm>
#include <bit>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <new>
#include <optional>
#include <string_view>

#include <fcntl.h>
#include <unistd.h>

namespace vd::media {

namespace {

// How far past where a packet should start we look for its bytes (an MP3's frames are found by
// its parser, whose positions are those of the read that held the frame's start).
constexpr int64_t kSearchWindow = 1 << 16;
// PCM packets that follow each other in the file are joined into chunks of up to this many frames.
constexpr uint32_t kMostFramesPerChunk = 16384;
constexpr uint32_t kMostSamplesPerChunk = 256;

// Core Audio's flags for 'lpcm' descriptions.
constexpr uint32_t kFloat = 1, kBigEndian = 2, kSignedInteger = 4, kPacked = 8;

struct PcmCoding {
    AVCodecID codec;
    FourCharCode classic;  // 0: only 'lpcm' describes it
    int bits;
    uint32_t lpcmFlags;
};

constexpr PcmCoding kPcmCodings[] = {
    {AV_CODEC_ID_PCM_S16LE, FourCC("sowt"), 16, kSignedInteger | kPacked},
    {AV_CODEC_ID_PCM_S16BE, FourCC("twos"), 16, kSignedInteger | kPacked | kBigEndian},
    {AV_CODEC_ID_PCM_S8, FourCC("twos"), 8, kSignedInteger | kPacked | kBigEndian},
    {AV_CODEC_ID_PCM_U8, FourCC("raw "), 8, kPacked | kBigEndian},
    {AV_CODEC_ID_PCM_S24BE, FourCC("in24"), 24, kSignedInteger | kPacked | kBigEndian},
    {AV_CODEC_ID_PCM_S24LE, 0, 24, kSignedInteger | kPacked},
    {AV_CODEC_ID_PCM_S32BE, 0, 32, kSignedInteger | kPacked | kBigEndian},
    {AV_CODEC_ID_PCM_S32LE, 0, 32, kSignedInteger | kPacked},
    {AV_CODEC_ID_PCM_F32BE, 0, 32, kFloat | kPacked | kBigEndian},
    {AV_CODEC_ID_PCM_F32LE, 0, 32, kFloat | kPacked},
    {AV_CODEC_ID_PCM_F64BE, 0, 64, kFloat | kPacked | kBigEndian},
    {AV_CODEC_ID_PCM_F64LE, 0, 64, kFloat | kPacked},
    {AV_CODEC_ID_PCM_MULAW, FourCC("ulaw"), 8, 0},
    {AV_CODEC_ID_PCM_ALAW, FourCC("alaw"), 8, 0},
};

const PcmCoding* FindPcmCoding(AVCodecID codec) {
    for (const PcmCoding& c : kPcmCodings)
        if (c.codec == codec) return &c;
    return nullptr;
}

// The common start of a sound description, version 0: format, data reference 1, channels, sample
// size and a 16.16 rate; extensions (atoms) follow.
std::vector<uint8_t> ClassicDescription(FourCharCode format, int channels, int bits, int rate,
                                        const std::vector<uint8_t>& extensions = {}) {
    AtomBuilder d;
    d.Begin(format);
    d.Zeros(6);
    d.U16(1);
    d.U16(0);  // version
    d.U16(0);  // revision
    d.U32(0);  // vendor
    d.U16(uint16_t(channels));
    d.U16(uint16_t(bits));
    d.U16(0);  // compression id
    d.U16(0);  // packet size
    d.U32(uint32_t(rate) << 16);
    d.Bytes(extensions.data(), extensions.size());
    d.End();
    return d.Result();
}

// Version 2 'lpcm': any PCM layout, and rates a 16.16 field cannot hold.
std::vector<uint8_t> LpcmDescription(int channels, int bits, int rate, uint32_t flags) {
    AtomBuilder d;
    d.Begin(FourCC("lpcm"));
    d.Zeros(6);
    d.U16(1);
    d.U16(2);  // version
    d.U16(0);
    d.U32(0);
    d.U16(3);
    d.U16(16);
    d.U16(0xFFFE);
    d.U16(0);
    d.U32(0x00010000);
    d.U32(72);  // size of the version 2 structure
    d.U64(std::bit_cast<uint64_t>(double(rate)));
    d.U32(uint32_t(channels));
    d.U32(0x7F000000);
    d.U32(uint32_t(bits));
    d.U32(flags);
    d.U32(uint32_t(channels * bits / 8));  // bytes per packet
    d.U32(1);                              // frames per packet
    d.End();
    return d.Result();
}

void Descriptor(AtomBuilder& out, uint8_t tag, const std::vector<uint8_t>& body) {
    out.U8(tag);
    const auto size = uint32_t(body.size());
    out.U8(uint8_t(0x80 | (size >> 21 & 0x7F)));
    out.U8(uint8_t(0x80 | (size >> 14 & 0x7F)));
    out.U8(uint8_t(0x80 | (size >> 7 & 0x7F)));
    out.U8(uint8_t(size & 0x7F));
    out.Bytes(body.data(), body.size());
}

// The MPEG-4 elementary stream descriptor of an AAC stream with its decoder configuration.
std::vector<uint8_t> EsdsAtom(const std::vector<uint8_t>& audioSpecificConfig, int64_t bitRate) {
    AtomBuilder specific, config, stream, sl, atom;
    specific.Bytes(audioSpecificConfig.data(), audioSpecificConfig.size());
    config.U8(0x40);  // MPEG-4 audio
    config.U8(0x15);  // audio stream
    config.U8(0), config.U16(0);  // buffer size
    config.U32(uint32_t(std::max<int64_t>(0, bitRate)));
    config.U32(uint32_t(std::max<int64_t>(0, bitRate)));
    Descriptor(config, 0x05, specific.Result());
    sl.U8(0x02);
    stream.U16(1);  // elementary stream id
    stream.U8(0);
    Descriptor(stream, 0x04, config.Result());
    Descriptor(stream, 0x06, sl.Result());
    atom.BeginFull(FourCC("esds"), 0, 0);
    Descriptor(atom, 0x03, stream.Result());
    atom.End();
    return atom.Result();
}

// An ADTS frame header's length (its bytes precede every frame of a raw AAC file), or 0 when the
// packet does not start with one.
size_t AdtsHeaderLength(const AVPacket& packet) {
    if (packet.size < 7 || packet.data[0] != 0xFF || (packet.data[1] & 0xF6) != 0xF0) return 0;
    return (packet.data[1] & 1) ? 7 : 9;
}

std::vector<uint8_t> ConfigFromAdts(const uint8_t* h) {
    const int profile = h[2] >> 6, rateIndex = h[2] >> 2 & 0xF, channels = (h[2] & 1) << 2 | h[3] >> 6;
    const int config = (profile + 1) << 11 | rateIndex << 7 | channels << 3;
    return {uint8_t(config >> 8), uint8_t(config)};
}

int64_t LittleEndian32(const uint8_t* b) { return int64_t(uint32_t(b[0]) | uint32_t(b[1]) << 8 | uint32_t(b[2]) << 16 | uint32_t(b[3]) << 24); }

// Reads the source to check where packets are.
class SourceBytes {
public:
    Status Open(const std::string& path) {
        fd_ = platform::UniqueFd(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
        if (!fd_.Valid()) return StatusFromErrno(errno, MediaStep::kOpening);
        return util::kNoError;
    }
    bool Matches(int64_t at, const uint8_t* bytes, size_t size) {
        if (at < 0) return false;
        buffer_.resize(size);
        return ReadAt(at, buffer_.data(), size) == size && std::memcmp(buffer_.data(), bytes, size) == 0;
    }
    // The first place at or after from, within the window, that holds the bytes.
    std::optional<int64_t> Find(int64_t from, const uint8_t* bytes, size_t size) {
        buffer_.resize(size_t(kSearchWindow) + size);
        const size_t got = ReadAt(from, buffer_.data(), buffer_.size());
        const auto end = buffer_.begin() + ptrdiff_t(got);
        const auto found = std::search(buffer_.begin(), end, bytes, bytes + size);
        if (found == end) return std::nullopt;
        return from + (found - buffer_.begin());
    }

private:
    size_t ReadAt(int64_t at, uint8_t* into, size_t size) {
        size_t done = 0;
        while (done < size) {
            const ssize_t n = ::pread(fd_.Get(), into + done, size - done, off_t(at) + off_t(done));
            if (n < 0 && errno == EINTR) continue;
            if (n <= 0) break;
            done += size_t(n);
        }
        return done;
    }

    platform::UniqueFd fd_;
    std::vector<uint8_t> buffer_;
};

struct TableBuilder {
    LinkedSoundTable& table;
    bool pcm;
    uint32_t frameBytes;
    uint64_t chunkEnd = 0;
    int64_t frames = 0;

    void Add(uint64_t offset, uint32_t size, uint32_t duration) {
        const uint32_t count = pcm ? size / frameBytes : 1;
        const uint32_t limit = pcm ? kMostFramesPerChunk : kMostSamplesPerChunk;
        if (!table.chunkOffsets.empty() && offset == chunkEnd && table.samplesPerChunk.back() + count <= limit) {
            table.samplesPerChunk.back() += count;
        } else {
            table.chunkOffsets.push_back(offset);
            table.samplesPerChunk.push_back(count);
        }
        chunkEnd = offset + size;
        if (pcm) {
            frames += count;
            return;
        }
        table.sampleSizes.push_back(size);
        if (!table.durations.empty() && table.durations.back().second == duration) ++table.durations.back().first;
        else table.durations.emplace_back(1, duration);
    }
};

Status Describe(const AVCodecParameters& p, const AVPacket* firstPacket, bool adts, LinkedSoundTable& table, bool& pcm,
                uint32_t& frameBytes) {
    const int channels = p.ch_layout.nb_channels, rate = p.sample_rate;
    pcm = false;
    frameBytes = 0;
    if (const PcmCoding* coding = FindPcmCoding(p.codec_id)) {
        const bool classic = coding->classic && rate <= 0xFFFF;
        if (!classic && !coding->lpcmFlags) return MediaFailure(util::kFeatureUnsupported, "no description for this rate");
        pcm = true;
        frameBytes = uint32_t(channels * coding->bits / 8);
        table.constantSampleSize = frameBytes;
        table.description = classic ? ClassicDescription(coding->classic, channels, coding->bits, rate)
                                    : LpcmDescription(channels, coding->bits, rate, coding->lpcmFlags);
        return util::kNoError;
    }
    switch (p.codec_id) {
        case AV_CODEC_ID_MP3:
            table.description = ClassicDescription(FourCC(".mp3"), channels, 16, std::min(rate, 0xFFFF));
            return util::kNoError;
        case AV_CODEC_ID_AAC: {
            std::vector<uint8_t> config(p.extradata, p.extradata + p.extradata_size);
            if (adts && firstPacket && AdtsHeaderLength(*firstPacket)) config = ConfigFromAdts(firstPacket->data);
            if (config.empty()) return MediaFailure(util::kFeatureUnsupported, "AAC without its decoder configuration");
            table.description = ClassicDescription(FourCC("mp4a"), channels, 16, std::min(rate, 0xFFFF), EsdsAtom(config, p.bit_rate));
            return util::kNoError;
        }
        case AV_CODEC_ID_ALAC: {
            // Its configuration is kept as the whole 'alac' atom of the file it came from.
            if (p.extradata_size != 36 || std::memcmp(p.extradata + 4, "alac", 4) != 0)
                return MediaFailure(util::kFeatureUnsupported, "ALAC without its configuration atom");
            table.description = ClassicDescription(FourCC("alac"), channels, 16, std::min(rate, 0xFFFF),
                                                   std::vector<uint8_t>(p.extradata, p.extradata + 36));
            return util::kNoError;
        }
        default:
            return MediaFailure(util::kFeatureUnsupported,
                                std::string("a sound track cannot refer to ") + avcodec_get_name(p.codec_id) + " samples");
    }
}

}  // namespace

Status LinkedSoundOfFile(const std::string& source, LinkedSoundTable& table) {
    InputFormatPtr format;
    if (Status s = OpenDemuxer(source, format)) return s;
    AVFormatContext* raw = format.get();
    int index = -1;
    for (unsigned i = 0; i < raw->nb_streams && index < 0; ++i) {
        const AVCodecParameters& p = *raw->streams[i]->codecpar;
        if (p.codec_type == AVMEDIA_TYPE_AUDIO && p.sample_rate > 0 && p.ch_layout.nb_channels > 0 &&
            p.ch_layout.nb_channels <= 64)
            index = int(i);
    }
    if (index < 0) return MediaFailure(util::kNoSoundTrack, source + " holds no sound");
    const AVStream& stream = *raw->streams[index];
    const AVCodecParameters& p = *stream.codecpar;
    // A raw AAC file frames every packet with a header that a QuickTime sample does not have.
    const bool adts = p.codec_id == AV_CODEC_ID_AAC && std::string_view(raw->iformat->name) == "aac";

    SourceBytes bytes;
    if (Status s = bytes.Open(source)) return s;
    PacketPtr packet(av_packet_alloc());
    if (!packet) return MediaFailure(util::kMemoryFull, "no memory for a packet");

    try {
        LinkedSoundTable made;
        made.timeScale = p.sample_rate;
        bool pcm = false, described = false;
        uint32_t frameBytes = 0;
        std::optional<TableBuilder> builder;
        int64_t expected = 0;
        for (int64_t n = 0;; ++n) {
            int rc = av_read_frame(raw, packet.get());
            if (rc == AVERROR(EAGAIN)) continue;
            if (rc == AVERROR_EOF) break;
            if (rc < 0) return StatusFromAvError(rc, MediaStep::kReading);
            struct Unref {
                AVPacket* p;
                ~Unref() { av_packet_unref(p); }
            } unref{packet.get()};
            if (packet->stream_index != index || packet->size <= 0) continue;
            if (n % 256 == 0)
                if (Status s = StopRequestStatus()) return s;
            if (!described) {
                if (Status s = Describe(p, packet.get(), adts, made, pcm, frameBytes)) return s;
                builder.emplace(TableBuilder{made, pcm, frameBytes});
                described = true;
            }
            const auto size = size_t(packet->size);
            std::optional<int64_t> at;
            if (bytes.Matches(expected, packet->data, size)) at = expected;
            else if (bytes.Matches(packet->pos, packet->data, size)) at = packet->pos;
            else at = bytes.Find(std::max<int64_t>(expected, packet->pos), packet->data, size);
            if (!at) return MediaFailure(util::kCorruptData, source + ": a packet is not where its demuxer read it");
            expected = *at + int64_t(size);

            const size_t header = adts ? AdtsHeaderLength(*packet) : 0;
            if (header >= size) continue;
            if (pcm && size % frameBytes != 0) return MediaFailure(util::kCorruptData, source + ": a packet of part frames");
            int64_t duration = 0;
            if (!pcm) {
                duration = packet->duration > 0 ? av_rescale_q(packet->duration, stream.time_base, AVRational{1, p.sample_rate})
                                                : p.frame_size;
                if (duration <= 0 || duration > INT32_MAX)
                    return MediaFailure(util::kFeatureUnsupported, source + ": packets without a length");
            }
            builder->Add(uint64_t(*at) + header, uint32_t(size - header), uint32_t(duration));
            // The decoder's delay is marked on the first packet, the encoder's padding on the last.
            size_t skipSize = 0;
            if (const uint8_t* skip = av_packet_get_side_data(packet.get(), AV_PKT_DATA_SKIP_SAMPLES, &skipSize);
                skip && skipSize >= 8) {
                if (made.sampleSizes.size() == 1) made.leadingFrames = LittleEndian32(skip);
                made.trailingFrames = LittleEndian32(skip + 4);
            }
        }
        if (!described) return MediaFailure(util::kNoSoundTrack, source + " holds no sound samples");
        if (pcm) {
            for (int64_t left = builder->frames; left > 0; left -= INT32_MAX)
                made.durations.emplace_back(uint32_t(std::min<int64_t>(left, INT32_MAX)), 1);
        }
        table = std::move(made);
    } catch (const std::bad_alloc&) {
        return MediaFailure(util::kMemoryFull, "no memory for the table of " + source);
    }
    return util::kNoError;
}

Status WriteReferenceMovie(const std::string& source, const std::string& target) {
    LinkedSoundTable table;
    if (Status s = LinkedSoundOfFile(source, table)) return s;
    std::vector<uint8_t> movie;
    try {
        movie = LayOutReferenceMovie(table, source, std::filesystem::path(target).parent_path().string(), MacSecondsNow());
    } catch (const std::bad_alloc&) {
        return MediaFailure(util::kMemoryFull, "no memory for the reference movie of " + source);
    }
    PendingFile file;
    if (Status s = file.Create(target)) return s;
    if (Status s = file.Write(movie.data(), movie.size())) return s;
    return file.Commit();
}

}  // namespace vd::media
