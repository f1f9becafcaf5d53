#include "platform/graphics/quicktime_image.h"

#include <algorithm>
#include <cmath>
#include <new>

namespace vd::platform {

namespace {

constexpr uint32_t Code(const char (&c)[5]) {
    return uint32_t(uint8_t(c[0])) << 24 | uint32_t(uint8_t(c[1])) << 16 | uint32_t(uint8_t(c[2])) << 8 | uint8_t(c[3]);
}
constexpr size_t kDescriptionSize = 86;

uint32_t Be32(const uint8_t* p) { return uint32_t(p[0]) << 24 | uint32_t(p[1]) << 16 | uint32_t(p[2]) << 8 | p[3]; }
uint16_t Be16(const uint8_t* p) { return uint16_t(p[0] << 8 | p[1]); }

void Put32(std::vector<uint8_t>& out, uint32_t v) {
    for (int shift : {24, 16, 8, 0}) out.push_back(uint8_t(v >> shift));
}
void Put16(std::vector<uint8_t>& out, uint16_t v) {
    out.push_back(uint8_t(v >> 8));
    out.push_back(uint8_t(v));
}
uint32_t Fixed(double value) { return uint32_t(std::lround(std::clamp(value, 0.0, 32767.0) * 65536.0)); }

}  // namespace

util::Status ReadQuickTimeImage(const uint8_t* bytes, size_t size, QuickTimeImage& image) {
    bool described = false, found = false;
    QuickTimeImage out;
    for (size_t at = 0; at + 8 <= size;) {
        uint64_t atomSize = Be32(bytes + at);
        const uint32_t type = Be32(bytes + at + 4);
        size_t header = 8;
        if (atomSize == 1) {  // a 64-bit size follows the type
            if (at + 16 > size) return util::kCorruptData;
            atomSize = uint64_t(Be32(bytes + at + 8)) << 32 | Be32(bytes + at + 12);
            header = 16;
        } else if (atomSize == 0) {
            atomSize = size - at;  // to the end of the file
        }
        if (atomSize < header || atomSize > size - at) return util::kCorruptData;
        const uint8_t* body = bytes + at + header;
        const size_t bodySize = size_t(atomSize) - header;
        if (type == Code("idsc")) {
            if (bodySize < kDescriptionSize) return util::kCorruptData;
            out.compressor = Be32(body + 4);
            out.width = Be16(body + 32);
            out.height = Be16(body + 34);
            out.hDpi = Be32(body + 36) / 65536.0;
            out.vDpi = Be32(body + 40) / 65536.0;
            const size_t nameLength = std::min<size_t>(body[50], 31);
            out.name.assign(reinterpret_cast<const char*>(body + 51), nameLength);
            out.depth = int16_t(Be16(body + 82));
            described = true;
        } else if (type == Code("idat")) {
            out.dataOffset = at + header;
            out.dataSize = bodySize;
            found = true;
        }
        at += size_t(atomSize);
    }
    if (!described || !found || out.dataSize == 0) return util::kCorruptData;
    image = std::move(out);
    return util::kNoError;
}

util::Status WriteQuickTimeImage(const QuickTimeImage& image, const uint8_t* data, size_t dataSize,
                                 std::vector<uint8_t>& file) {
    if (image.width < 1 || image.height < 1 || image.width > 0xFFFF || image.height > 0xFFFF ||
        dataSize > 0xFFFFFFFFu - 8)
        return util::kBadParameter;
    try {
        std::vector<uint8_t> out;
        out.reserve(8 + kDescriptionSize + 8 + dataSize);
        Put32(out, uint32_t(8 + kDescriptionSize));
        Put32(out, Code("idsc"));
        Put32(out, uint32_t(kDescriptionSize));
        Put32(out, image.compressor);
        Put32(out, 0);                 // reserved
        Put16(out, 0);                 // reserved
        Put16(out, 0);                 // data reference index
        Put16(out, 0);                 // version
        Put16(out, 0);                 // revision level
        Put32(out, 0);                 // vendor
        Put32(out, 0);                 // temporal quality
        Put32(out, 0x400);             // spatial quality: lossless
        Put16(out, uint16_t(image.width));
        Put16(out, uint16_t(image.height));
        Put32(out, Fixed(image.hDpi));
        Put32(out, Fixed(image.vDpi));
        Put32(out, uint32_t(dataSize));
        Put16(out, 1);                 // frame count
        const size_t nameLength = std::min<size_t>(image.name.size(), 31);
        out.push_back(uint8_t(nameLength));
        out.insert(out.end(), image.name.begin(), image.name.begin() + long(nameLength));
        out.insert(out.end(), 31 - nameLength, 0);
        Put16(out, uint16_t(image.depth));
        Put16(out, 0xFFFF);            // no colour table
        Put32(out, uint32_t(8 + dataSize));
        Put32(out, Code("idat"));
        out.insert(out.end(), data, data + dataSize);
        file = std::move(out);
    } catch (const std::bad_alloc&) {
        return util::kMemoryFull;
    }
    return util::kNoError;
}

}  // namespace vd::platform
