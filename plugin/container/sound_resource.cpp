#include "container/sound_resource.h"

#include "container/stream_types.h"
#include "util/status_codes.h"

#include <algorithm>

namespace vd::container {

namespace {

constexpr uint16_t kSampledSynth = 5;
constexpr uint32_t kMonoInit = 0x00000080;
constexpr uint16_t kBufferCommand = 0x8051;  // bufferCmd with the flag "param2 is an offset"
constexpr uint16_t kSoundCommand = 0x8050;   // soundCmd, likewise
constexpr size_t kStandardHeaderSize = 22;
constexpr size_t kLongHeaderSize = 64;       // extended and compressed headers
constexpr uint8_t kStandardEncode = 0x00;
constexpr uint8_t kCompressedEncode = 0xFE;
constexpr uint8_t kExtendedEncode = 0xFF;
constexpr int kMaxChannels = 8;
constexpr int16_t kThreeToOne = 3;  // compression ids of MACE headers that leave the format 0
constexpr int16_t kSixToOne = 4;

// Bounds-checked big-endian reads over the stream.
class Reader {
public:
    explicit Reader(std::span<const uint8_t> bytes) : bytes_(bytes) {}
    bool Has(size_t at, size_t size) const { return at <= bytes_.size() && size <= bytes_.size() - at; }
    uint16_t U16(size_t at) const { return uint16_t(bytes_[at] << 8 | bytes_[at + 1]); }
    uint32_t U32(size_t at) const {
        return uint32_t(bytes_[at]) << 24 | uint32_t(bytes_[at + 1]) << 16 | uint32_t(bytes_[at + 2]) << 8 | bytes_[at + 3];
    }
    uint8_t U8(size_t at) const { return bytes_[at]; }
    size_t Size() const { return bytes_.size(); }

private:
    std::span<const uint8_t> bytes_;
};

void Put16(std::vector<uint8_t>& b, uint16_t v) {
    b.push_back(uint8_t(v >> 8));
    b.push_back(uint8_t(v));
}
void Put32(std::vector<uint8_t>& b, uint32_t v) {
    Put16(b, uint16_t(v >> 16));
    Put16(b, uint16_t(v));
}

// Bytes and frames of one packet per channel of the codecs we decode.
struct Packet {
    uint32_t codec;
    size_t bytes;
    int64_t frames;
};
constexpr Packet kPackets[] = {
    {FourCC("ima4"), 34, 64}, {FourCC("MAC3"), 2, 6}, {FourCC("MAC6"), 1, 6},
    {FourCC("ulaw"), 1, 1},   {FourCC("alaw"), 1, 1},
};

// The offset of the sound header that the first sound or buffer command names.
int32_t FindHeader(const Reader& r, size_t& header) {
    if (!r.Has(0, 2)) return util::kCorruptData;
    size_t at = 0;
    switch (r.U16(0)) {
        case 1: {
            if (!r.Has(2, 2)) return util::kCorruptData;
            const size_t formats = r.U16(2);
            at = 4 + formats * 6;  // each: data format id (2), init options (4)
            break;
        }
        case 2: at = 4; break;  // reference count (2)
        default: return util::kBadSoundFormat;
    }
    if (!r.Has(at, 2)) return util::kCorruptData;
    const size_t commands = r.U16(at);
    at += 2;
    if (!r.Has(at, commands * 8)) return util::kCorruptData;
    for (size_t i = 0; i < commands; ++i, at += 8) {
        const uint16_t command = r.U16(at);
        if (command == kBufferCommand || command == kSoundCommand) {
            header = r.U32(at + 4);
            return 0;
        }
    }
    return util::kBadSoundFormat;  // a resource that plays no sampled sound
}

}  // namespace

namespace {

std::vector<uint8_t> SoundResourceHeader(size_t count, uint32_t rate, size_t capacity) {
    std::vector<uint8_t> b;
    b.reserve(capacity);
    Put16(b, 1);                         // format 1
    Put16(b, 1);                         // one data format:
    Put16(b, kSampledSynth);             //   sampled sound
    Put32(b, kMonoInit);                 //   mono
    Put16(b, 1);                         // one command:
    Put16(b, kBufferCommand);            //   play the buffer
    Put16(b, 0);                         //   param1
    Put32(b, uint32_t(kSoundHeaderOffset));  // param2: where the header is
    Put32(b, 0);                         // sample pointer: the samples follow the header
    Put32(b, uint32_t(count));           // sample bytes
    Put32(b, rate);
    Put32(b, 0);                         // loop start
    Put32(b, 0);                         // loop end
    b.push_back(kStandardEncode);
    b.push_back(0);                      // base note
    return b;
}

}  // namespace

std::vector<uint8_t> BuildSoundResource(const uint8_t* samples, size_t count, uint32_t rate) {
    std::vector<uint8_t> b = SoundResourceHeader(count, rate, kSoundSamplesOffset + count);
    b.insert(b.end(), samples, samples + count);
    return b;
}

void WriteSoundResourceHeader(uint8_t* header, size_t count, uint32_t rate) {
    const std::vector<uint8_t> b = SoundResourceHeader(count, rate, kSoundSamplesOffset);
    std::copy(b.begin(), b.end(), header);
}

int32_t ParseSoundResource(std::span<const uint8_t> stream, SoundResourceLayout& layout) {
    const Reader r(stream);
    size_t h = 0;
    if (int32_t e = FindHeader(r, h)) return e;
    if (!r.Has(h, kStandardHeaderSize)) return util::kCorruptData;
    // A sample pointer names memory of the program that made the resource: its samples are not here.
    if (r.U32(h) != 0) return util::kBadSoundFormat;
    SoundResourceLayout l;
    l.rate = r.U32(h + 8);
    const uint8_t encode = r.U8(h + 20);
    uint64_t bytes = 0;
    if (encode == kStandardEncode) {
        l.channels = 1;
        l.bits = 8;
        l.dataOffset = h + kStandardHeaderSize;
        bytes = r.U32(h + 4);
        l.frames = int64_t(bytes);
    } else if (encode == kExtendedEncode || encode == kCompressedEncode) {
        if (!r.Has(h, kLongHeaderSize)) return util::kCorruptData;
        const uint32_t channels = r.U32(h + 4);
        if (channels < 1 || channels > kMaxChannels) return util::kBadSoundFormat;
        l.channels = int(channels);
        l.dataOffset = h + kLongHeaderSize;
        const uint64_t frames = r.U32(h + 22);
        if (encode == kExtendedEncode) {
            l.bits = r.U16(h + 48);
            if (l.bits != 8 && l.bits != 16) return util::kBadSoundFormat;
            bytes = frames * channels * uint64_t(l.bits / 8);
            l.frames = int64_t(frames);
        } else {
            uint32_t codec = r.U32(h + 40);
            const int16_t compressionId = int16_t(r.U16(h + 56));
            if (codec == 0 && compressionId == kThreeToOne) codec = FourCC("MAC3");
            if (codec == 0 && compressionId == kSixToOne) codec = FourCC("MAC6");
            const Packet* packet = nullptr;
            for (const Packet& p : kPackets)
                if (p.codec == codec) packet = &p;
            if (!packet) return util::kBadSoundFormat;
            l.compression = codec;
            l.bits = 16;
            // numFrames counts packets here, each one packet per channel.
            bytes = frames * channels * packet->bytes;
            l.frames = int64_t(frames) * packet->frames;
        }
    } else {
        return util::kBadSoundFormat;
    }
    if (l.rate == 0) return util::kBadSoundFormat;
    if (!r.Has(l.dataOffset, 0) || bytes > r.Size() - l.dataOffset) return util::kCorruptData;
    l.dataSize = size_t(bytes);
    layout = l;
    return 0;
}

}  // namespace vd::container
