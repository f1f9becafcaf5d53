#include "platform/graphics/pict_codec.h"

#include "platform/graphics/pack_bits.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <new>

namespace vd::platform {

namespace {

constexpr uint16_t kVersionOp = 0x0011, kVersion2 = 0x02FF, kHeaderOp = 0x0C00, kClipOp = 0x0001;
constexpr uint16_t kNoOp = 0x0000, kDefHiliteOp = 0x001E, kShortCommentOp = 0x00A0, kLongCommentOp = 0x00A1;
constexpr uint16_t kDirectBitsRectOp = 0x009A, kEndOp = 0x00FF;
constexpr uint16_t kRgbDirect = 16, kPixelSize = 32, kComponents = 3, kComponentSize = 8;
constexpr uint16_t kPackByComponent = 4;
constexpr uint16_t kDitherCopy = 0x40;
constexpr int32_t kLargestCoordinate = 0x7FFF;
// rowBytes has 15 bits beside the pixmap flag; wider rows say the largest value.
constexpr size_t kLargestRowBytes = 0x7FFE;
// Whether rows are packed, and with one-byte or two-byte counts, goes by the bytes of a row's three
// components, as ImageMagick reads pictures (not by rowBytes, which counts four bytes a pixel).
constexpr size_t kPackedRowLimit = 8;
constexpr size_t kByteCountLimit = 250;

class Reader {
public:
    Reader(const uint8_t* data, size_t size, size_t at) : data_(data), size_(size), at_(at) {}
    bool Has(size_t n) const { return at_ <= size_ && size_ - at_ >= n; }
    bool Skip(size_t n) {
        if (!Has(n)) return false;
        at_ += n;
        return true;
    }
    bool U8(uint16_t& v) {
        if (!Has(1)) return false;
        v = data_[at_++];
        return true;
    }
    bool U16(uint16_t& v) {
        if (!Has(2)) return false;
        v = uint16_t(data_[at_] << 8 | data_[at_ + 1]);
        at_ += 2;
        return true;
    }
    bool U32(uint32_t& v) {
        uint16_t hi = 0, lo = 0;
        if (!U16(hi) || !U16(lo)) return false;
        v = uint32_t(hi) << 16 | lo;
        return true;
    }
    bool Rect(int32_t& top, int32_t& left, int32_t& bottom, int32_t& right) {
        uint16_t t = 0, l = 0, b = 0, r = 0;
        if (!U16(t) || !U16(l) || !U16(b) || !U16(r)) return false;
        top = int16_t(t), left = int16_t(l), bottom = int16_t(b), right = int16_t(r);
        return true;
    }
    size_t At() const { return at_; }
    void AlignToWord(size_t origin) { at_ += (at_ - origin) & 1; }

private:
    const uint8_t* data_;
    size_t size_, at_;
};

double DpiOf(uint32_t fixed) { return fixed ? fixed / 65536.0 : 72.0; }

uint32_t FixedOf(double dpi) {
    const double value = dpi > 0 && dpi < 32768 ? dpi : 72.0;
    return uint32_t(std::lround(value * 65536.0));
}

// Skips what may stand between the header and the pixmap, or after it, and changes nothing.
bool SkipHarmless(Reader& in, uint16_t op, size_t origin) {
    switch (op) {
        case kNoOp:
        case kDefHiliteOp: return true;
        case kShortCommentOp: return in.Skip(2);
        case kLongCommentOp: {
            uint16_t kind = 0, length = 0;
            if (!in.U16(kind) || !in.U16(length) || !in.Skip(length)) return false;
            in.AlignToWord(origin);
            return true;
        }
        default: return false;
    }
}

void Put16(std::vector<uint8_t>& out, uint32_t v) {
    out.push_back(uint8_t(v >> 8));
    out.push_back(uint8_t(v));
}
void Put32(std::vector<uint8_t>& out, uint32_t v) { Put16(out, v >> 16), Put16(out, v & 0xFFFF); }
void PutRect(std::vector<uint8_t>& out, int32_t height, int32_t width) {
    Put16(out, 0), Put16(out, 0), Put16(out, uint32_t(height)), Put16(out, uint32_t(width));
}

}  // namespace

bool ReadPictLayout(const uint8_t* file, size_t size, PictLayout& layout) {
    layout.rows.clear();
    const size_t origin = kPictFileHeader;
    Reader in(file, size, origin);
    int32_t top = 0, left = 0, bottom = 0, right = 0;
    uint16_t op = 0, version = 0;
    if (!in.Skip(2) || !in.Rect(top, left, bottom, right)) return false;
    if (!in.U16(op) || op != kVersionOp || !in.U16(version) || version != kVersion2) return false;
    const int32_t frameWidth = right - left, frameHeight = bottom - top;
    for (;;) {
        if (!in.U16(op)) return false;
        if (op == kDirectBitsRectOp) break;
        if (op == kHeaderOp) {
            if (!in.Skip(24)) return false;
        } else if (op == kClipOp) {
            uint16_t length = 0;
            if (!in.U16(length) || length < 2 || !in.Skip(length - 2u)) return false;
        } else if (!SkipHarmless(in, op, origin)) {
            return false;
        }
    }
    uint32_t baseAddress = 0, packSize = 0, hRes = 0, vRes = 0, planeBytes = 0, table = 0, reserved = 0;
    uint16_t rowBytes = 0, pmVersion = 0, packType = 0, pixelType = 0, pixelSize = 0, components = 0, componentSize = 0;
    int32_t bTop = 0, bLeft = 0, bBottom = 0, bRight = 0, sTop = 0, sLeft = 0, sBottom = 0, sRight = 0;
    int32_t dTop = 0, dLeft = 0, dBottom = 0, dRight = 0;
    uint16_t mode = 0;
    if (!in.U32(baseAddress) || !in.U16(rowBytes) || !in.Rect(bTop, bLeft, bBottom, bRight) || !in.U16(pmVersion) ||
        !in.U16(packType) || !in.U32(packSize) || !in.U32(hRes) || !in.U32(vRes) || !in.U16(pixelType) ||
        !in.U16(pixelSize) || !in.U16(components) || !in.U16(componentSize) || !in.U32(planeBytes) ||
        !in.U32(table) || !in.U32(reserved) || !in.Rect(sTop, sLeft, sBottom, sRight) ||
        !in.Rect(dTop, dLeft, dBottom, dRight) || !in.U16(mode))
        return false;
    const int32_t width = bRight - bLeft, height = bBottom - bTop;
    if (pixelType != kRgbDirect || pixelSize != kPixelSize || components != kComponents ||
        componentSize != kComponentSize || (packType != 0 && packType != kPackByComponent))
        return false;
    // Only a pixmap drawn whole and unscaled over the whole frame is the picture itself.
    if (width <= 0 || height <= 0 || width != frameWidth || height != frameHeight || sRight - sLeft != width ||
        sBottom - sTop != height || dRight - dLeft != width || dBottom - dTop != height)
        return false;
    const size_t planeRow = size_t(width) * kComponents;
    layout.width = width;
    layout.height = height;
    layout.hDpi = DpiOf(hRes);
    layout.vDpi = DpiOf(vRes);
    const bool packed = planeRow >= kPackedRowLimit;
    try {
        layout.rows.resize(size_t(height));
    } catch (const std::bad_alloc&) {
        return false;
    }
    for (PictLayout::Row& row : layout.rows) {
        uint16_t count = uint16_t(planeRow);
        if (packed && !(planeRow > kByteCountLimit ? in.U16(count) : in.U8(count))) return false;
        row = {in.At(), count};
        if (!in.Skip(count)) return false;
        if (packed && !UnpacksTo(file + row.offset, row.length, planeRow)) return false;
    }
    in.AlignToWord(origin);
    for (;;) {
        if (!in.U16(op)) return false;
        if (op == kEndOp) return true;
        if (!SkipHarmless(in, op, origin)) return false;
    }
}

void DecodePictRow(const uint8_t* file, const PictLayout& layout, int32_t y, uint8_t* planes) {
    const PictLayout::Row& row = layout.rows[size_t(y)];
    if (size_t(layout.width) * kComponents < kPackedRowLimit)
        std::memcpy(planes, file + row.offset, row.length);
    else
        UnpackBits(file + row.offset, row.length, planes, size_t(layout.width) * kComponents);
}

util::Status PictWriter::Begin(int32_t width, int32_t height, double hDpi, double vDpi, std::vector<uint8_t>& file) {
    if (width < 1 || height < 1 || width > kLargestCoordinate || height > kLargestCoordinate)
        return util::kBadParameter;
    file_ = &file;
    width_ = width;
    height_ = height;
    rowsWritten_ = 0;
    const size_t rowBytes = std::min(size_t(width) * 4, kLargestRowBytes);
    const size_t planeRow = size_t(width) * kComponents;
    try {
        planes_.resize(planeRow + PackBitsBound(planeRow) + 2);
        // Photographs hardly pack: room for the unpacked rows, so the picture is not moved as it grows.
        file.clear();
        file.reserve(kPictFileHeader + 128 + size_t(height) * (PackBitsBound(planeRow) + 2));
        file.assign(kPictFileHeader, 0);
        const uint32_t h = FixedOf(hDpi), v = FixedOf(vDpi);
        Put16(file, 0);  // the picture's size, known at the end
        PutRect(file, height, width);
        Put16(file, kVersionOp), Put16(file, kVersion2);
        Put16(file, kHeaderOp), Put16(file, 0xFFFE), Put16(file, 0), Put32(file, h), Put32(file, v);
        PutRect(file, height, width), Put32(file, 0);
        Put16(file, kClipOp), Put16(file, 10), PutRect(file, height, width);
        Put16(file, kDirectBitsRectOp), Put32(file, 0xFF);
        Put16(file, uint32_t(0x8000 | rowBytes)), PutRect(file, height, width);
        Put16(file, 0), Put16(file, kPackByComponent), Put32(file, 0), Put32(file, h), Put32(file, v);
        Put16(file, kRgbDirect), Put16(file, kPixelSize), Put16(file, kComponents), Put16(file, kComponentSize);
        Put32(file, 0), Put32(file, 0), Put32(file, 0);
        PutRect(file, height, width), PutRect(file, height, width), Put16(file, kDitherCopy);
    } catch (const std::bad_alloc&) {
        return util::kMemoryFull;
    }
    return util::kNoError;
}

util::Status PictWriter::AddRows(const uint8_t* pixels, size_t stride, int32_t count) {
    if (!file_ || rowsWritten_ + count > height_) return util::kInternalComponentError;
    const size_t width = size_t(width_), planeRow = width * kComponents;
    uint8_t* const r = planes_.data();
    uint8_t *const g = r + width, *const b = g + width, *const packed = r + planeRow;
    std::vector<uint8_t>& file = *file_;
    try {
        for (int32_t y = 0; y < count; ++y, pixels += stride) {
            const uint8_t* p = pixels;
            for (size_t x = 0; x < width; ++x, p += 3) r[x] = p[0], g[x] = p[1], b[x] = p[2];
            if (planeRow < kPackedRowLimit) {
                // A row this short is stored as it is: its three components, as ImageMagick reads it.
                file.insert(file.end(), r, r + planeRow);
                continue;
            }
            // Each component packed on its own, so that no run crosses from one into the next.
            size_t length = PackBits(r, width, packed);
            length += PackBits(g, width, packed + length);
            length += PackBits(b, width, packed + length);
            if (planeRow > kByteCountLimit) {
                if (length > 0xFFFF) return util::kMemoryFull;
                Put16(file, uint32_t(length));
            } else {
                file.push_back(uint8_t(length));
            }
            file.insert(file.end(), packed, packed + length);
        }
    } catch (const std::bad_alloc&) {
        return util::kMemoryFull;
    }
    rowsWritten_ += count;
    return util::kNoError;
}

util::Status PictWriter::Finish() {
    if (!file_ || rowsWritten_ != height_) return util::kInternalComponentError;
    std::vector<uint8_t>& file = *file_;
    try {
        if ((file.size() - kPictFileHeader) & 1) file.push_back(0);
        Put16(file, kEndOp);
    } catch (const std::bad_alloc&) {
        return util::kMemoryFull;
    }
    const size_t pictureSize = file.size() - kPictFileHeader;
    file[kPictFileHeader] = uint8_t(pictureSize >> 8);
    file[kPictFileHeader + 1] = uint8_t(pictureSize);
    file_ = nullptr;
    return util::kNoError;
}

}  // namespace vd::platform
