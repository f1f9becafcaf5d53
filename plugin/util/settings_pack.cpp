#include "util/settings_pack.h"

#include <limits>
#include <new>

#include <zlib.h>

namespace vd::util {

namespace {

constexpr size_t kLengthBytes = 4;

// Deflate codes at best 258 bytes in a little over 2 bits, so no stream expands more than about
// 1032 times its own size; a header that claims more is lying, whatever it says.
constexpr uint64_t kMaxInflateRatio = 1032;

// zlib wants somewhere to point even for zero bytes.
unsigned char gNoBytes = 0;

Status StatusFromZlib(int code) {
    switch (code) {
        case Z_OK: return kNoError;
        case Z_MEM_ERROR: return kMemoryFull;
        default: return kBadParameter;
    }
}

}  // namespace

Status PackSettings(std::vector<uint8_t>& bytes) noexcept {
    if (bytes.size() > std::numeric_limits<uint32_t>::max()) return kBadParameter;
    try {
        const uLong sourceLength = static_cast<uLong>(bytes.size());
        std::vector<uint8_t> block(kLengthBytes + compressBound(sourceLength), 0);
        uLongf packedLength = static_cast<uLongf>(block.size() - kLengthBytes);
        const Bytef* source = bytes.empty() ? &gNoBytes : bytes.data();
        if (const int code = compress(block.data() + kLengthBytes, &packedLength, source, sourceLength); code != Z_OK) {
            return StatusFromZlib(code);
        }
        const uint32_t length = static_cast<uint32_t>(bytes.size());
        block[0] = static_cast<uint8_t>(length >> 24);
        block[1] = static_cast<uint8_t>(length >> 16);
        block[2] = static_cast<uint8_t>(length >> 8);
        block[3] = static_cast<uint8_t>(length);
        block.resize(kLengthBytes + packedLength);
        bytes.swap(block);
        return kNoError;
    } catch (const std::bad_alloc&) {
        return kMemoryFull;
    }
}

Status UnpackSettings(std::vector<uint8_t>& block) noexcept {
    if (block.size() < kLengthBytes) return kBadParameter;
    const uint32_t claimed = (uint32_t{block[0]} << 24) | (uint32_t{block[1]} << 16) | (uint32_t{block[2]} << 8) |
                             uint32_t{block[3]};
    const uint64_t streamLength = block.size() - kLengthBytes;
    if (claimed > kMaxUnpackedSettingsBytes) return kMemoryFull;
    if (claimed > streamLength * kMaxInflateRatio) return kBadParameter;

    try {
        std::vector<uint8_t> settings(claimed, 0);
        uLongf unpackedLength = claimed;
        uLong consumed = static_cast<uLong>(streamLength);
        Bytef* destination = settings.empty() ? &gNoBytes : settings.data();
        const int code = uncompress2(destination, &unpackedLength, block.data() + kLengthBytes, &consumed);
        if (code != Z_OK) return StatusFromZlib(code);
        // A stream that ends early, or bytes after its end, mean the block was damaged or pieced
        // together; settings read from it would be silently wrong.
        if (unpackedLength != claimed || consumed != streamLength) return kBadParameter;
        block.swap(settings);
        return kNoError;
    } catch (const std::bad_alloc&) {
        return kMemoryFull;
    }
}

}  // namespace vd::util
