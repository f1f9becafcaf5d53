#include "platform/media/plain_wav_layout.h"

#include <algorithm>
#include <array>
#include <cstring>

#include <unistd.h>

namespace vd::media {

namespace {

constexpr uint16_t kPcmTag = 1;
constexpr uint16_t kFloatTag = 3;
constexpr uint16_t kExtensibleTag = 0xFFFE;
// A header larger than this is left to the library: a plain file keeps its chunks small.
constexpr size_t kHeaderLimit = 1 << 16;

uint32_t Le32(const uint8_t* p) { return uint32_t(p[0]) | uint32_t(p[1]) << 8 | uint32_t(p[2]) << 16 | uint32_t(p[3]) << 24; }
uint16_t Le16(const uint8_t* p) { return uint16_t(p[0] | p[1] << 8); }

// The library's codec for a format tag and sample size; nullptr for the layouts left to it.
const char* CodecFor(uint16_t tag, int bits) {
    if (tag == kPcmTag) {
        switch (bits) {
            case 8: return "pcm_u8";
            case 16: return "pcm_s16le";
            case 24: return "pcm_s24le";
            case 32: return "pcm_s32le";
        }
    } else if (tag == kFloatTag) {
        if (bits == 32) return "pcm_f32le";
        if (bits == 64) return "pcm_f64le";
    }
    return nullptr;
}

// The extensible format's subformat GUID holds the plain tag in its first two bytes, followed by
// the fixed tail that every such GUID shares.
bool ExtensibleTag(const uint8_t* fmt, uint32_t size, uint16_t& tag) {
    static constexpr std::array<uint8_t, 14> kGuidTail{0x00, 0x00, 0x00, 0x00, 0x10, 0x00, 0x80,
                                                        0x00, 0x00, 0xAA, 0x00, 0x38, 0x9B, 0x71};
    if (size < 40 || Le16(fmt + 16) < 22) return false;
    const uint16_t validBits = Le16(fmt + 18);
    if (validBits != Le16(fmt + 14)) return false;  // fewer valid bits than stored: the library's case
    if (std::memcmp(fmt + 26, kGuidTail.data(), kGuidTail.size()) != 0) return false;
    tag = Le16(fmt + 24);
    return true;
}

}  // namespace

bool ReadPlainWavLayout(int fd, int64_t fileSize, PlainWavLayout& layout) {
    std::array<uint8_t, 4096> buffer;
    const ssize_t got = ::pread(fd, buffer.data(), buffer.size(), 0);
    if (got < 12 || std::memcmp(buffer.data(), "RIFF", 4) != 0 || std::memcmp(buffer.data() + 8, "WAVE", 4) != 0)
        return false;
    bool haveFormat = false;
    int64_t at = 12;
    uint8_t chunk[8];
    uint8_t fmt[40];
    while (at + 8 <= fileSize && size_t(at) < kHeaderLimit) {
        if (::pread(fd, chunk, 8, at) != 8) return false;
        const uint32_t size = Le32(chunk + 4);
        if (std::memcmp(chunk, "fmt ", 4) == 0) {
            if (size < 16 || haveFormat) return false;
            const size_t want = std::min<size_t>(size, sizeof fmt);
            if (::pread(fd, fmt, want, at + 8) != ssize_t(want)) return false;
            uint16_t tag = Le16(fmt);
            if (tag == kExtensibleTag && !ExtensibleTag(fmt, size, tag)) return false;
            const int channels = Le16(fmt + 2), bits = Le16(fmt + 14);
            const uint32_t rate = Le32(fmt + 4);
            layout.codecName = CodecFor(tag, bits);
            if (!layout.codecName || channels < 1 || channels > 64 || rate == 0 || rate > INT32_MAX) return false;
            if (Le16(fmt + 12) != channels * bits / 8) return false;  // block align as the layout says
            layout.channels = channels;
            layout.rate = int(rate);
            haveFormat = true;
        } else if (std::memcmp(chunk, "data", 4) == 0) {
            // A streamed file states no size (0 or all ones): the library knows how to read those.
            if (!haveFormat || size == 0xFFFFFFFFu) return false;
            layout.dataOffset = at + 8;
            layout.dataSize = std::min<int64_t>(size, fileSize - layout.dataOffset);
            return true;
        }
        at += 8 + int64_t(size) + (size & 1);
    }
    return false;
}

}  // namespace vd::media
