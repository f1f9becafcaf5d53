#include "platform/graphics/macpaint_codec.h"

#include "platform/graphics/pack_bits.h"

#include <algorithm>
#include <cstring>
#include <new>

namespace vd::platform {

namespace {

constexpr size_t kHeaderSize = 512;
constexpr size_t kMacBinarySize = 128;
constexpr size_t kRowBytes = kMacPaintWidth / 8;
constexpr size_t kPictureBytes = kRowBytes * kMacPaintHeight;

// Luminance of a pixel of any of the raster's layouts (alpha, when there is one, over white).
int Luminance(const Raster& raster, int32_t x, int32_t y) {
    const uint8_t* p = raster.Row(y) + size_t(x) * size_t(raster.bands);
    int value = raster.bands >= 3 ? (299 * p[0] + 587 * p[1] + 114 * p[2]) / 1000 : p[0];
    if (raster.bands == 2 || raster.bands == 4) {
        const int alpha = p[raster.bands - 1];
        value = (value * alpha + 255 * (255 - alpha)) / 255;
    }
    return value;
}

}  // namespace

bool HasMacBinaryPaintHeader(const uint8_t* bytes, size_t size) {
    return size > kMacBinarySize + kHeaderSize && bytes[0] == 0 && std::memcmp(bytes + 65, "PNTG", 4) == 0;
}

util::Status DecodeMacPaint(const uint8_t* bytes, size_t size, Raster& raster) {
    if (HasMacBinaryPaintHeader(bytes, size)) bytes += kMacBinarySize, size -= kMacBinarySize;
    if (size <= kHeaderSize) return util::kCorruptData;
    std::vector<uint8_t> bits;
    try {
        bits.resize(kPictureBytes);
    } catch (const std::bad_alloc&) {
        return util::kMemoryFull;
    }
    if (UnpackBits(bytes + kHeaderSize, size - kHeaderSize, bits.data(), kPictureBytes) == 0) return util::kCorruptData;
    Raster out;
    out.width = kMacPaintWidth;
    out.height = kMacPaintHeight;
    out.bands = 1;
    out.xDpi = out.yDpi = 72;
    out.pixels.resize(size_t(kMacPaintWidth) * kMacPaintHeight);
    for (size_t i = 0; i < out.pixels.size(); ++i) out.pixels[i] = (bits[i / 8] >> (7 - i % 8)) & 1 ? 0 : 255;
    raster = std::move(out);
    return util::kNoError;
}

util::Status EncodeMacPaint(const Raster& raster, std::vector<uint8_t>& file) {
    if (raster.width < 1 || raster.height < 1) return util::kBadParameter;
    try {
        std::vector<uint8_t> out(kHeaderSize, 0);  // version 0: no patterns of its own
        uint8_t row[kRowBytes];
        for (int32_t y = 0; y < kMacPaintHeight; ++y) {
            std::fill(std::begin(row), std::end(row), uint8_t(0));
            for (int32_t x = 0; y < raster.height && x < std::min(raster.width, kMacPaintWidth); ++x)
                if (Luminance(raster, x, y) < 128) row[x / 8] |= uint8_t(0x80 >> (x % 8));
            uint8_t packed[PackBitsBound(kRowBytes)];
            out.insert(out.end(), packed, packed + PackBits(row, kRowBytes, packed));
        }
        file = std::move(out);
    } catch (const std::bad_alloc&) {
        return util::kMemoryFull;
    }
    return util::kNoError;
}

}  // namespace vd::platform
