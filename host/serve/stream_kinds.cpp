#include "stream_kinds.h"

#include "api/fnam.h"
#include "api/text_codec.h"
#include "api/values.h"

namespace vdhost::serve {

namespace {

constexpr uint32_t code(const char (&c)[5]) {
    return uint32_t(uint8_t(c[0])) << 24 | uint32_t(uint8_t(c[1])) << 16 | uint32_t(uint8_t(c[2])) << 8 |
           uint32_t(uint8_t(c[3]));
}

constexpr uint32_t kWrappedPicture = code("VDIM");
constexpr size_t kWrappedHeader = 4;

std::optional<std::string> browserPictureType(uint32_t type) {
    if (type == code("JPEG") || type == code("JFIF")) return "image/jpeg";
    if (type == code("PNGf")) return "image/png";
    if (type == code("GIFf")) return "image/gif";
    return std::nullopt;
}

bool isPictureType(uint32_t type) {
    for (const char* known : {"PICT", "TIFF", "BMPf", "PDF ", "EPS ", "HEIC", "WEBP", "JP2 ", "PSD ", "TGA ", "SGI "})
        if (type == fourCharCode(known)) return true;
    return false;
}

uint32_t wrappedType(const Stream& s) {
    if (s.size() < kWrappedHeader) return 0;
    const auto& b = *s.bytes;
    return uint32_t(b[0]) << 24 | uint32_t(b[1]) << 16 | uint32_t(b[2]) << 8 | uint32_t(b[3]);
}

}  // namespace

std::optional<ByteSlice> browserPicture(const FMX_BinaryData& binary) {
    for (const auto& s : binary.streams) {
        if (!s.bytes) continue;
        if (auto type = browserPictureType(s.type)) return ByteSlice{s.bytes, 0, s.size(), *type};
        if (s.type == kWrappedPicture)
            if (auto type = browserPictureType(wrappedType(s)))
                return ByteSlice{s.bytes, kWrappedHeader, s.size() - kWrappedHeader, *type};
    }
    return std::nullopt;
}

bool hasOtherPicture(const FMX_BinaryData& binary) {
    for (const auto& s : binary.streams)
        if (isPictureType(s.type) || (s.type == kWrappedPicture && !browserPictureType(wrappedType(s)))) return true;
    return false;
}

int soundStreamIndex(const FMX_BinaryData& binary) { return binary.indexOf(code("snd ")); }

std::optional<std::string> storedFileName(const FMX_BinaryData& binary) {
    int i = binary.indexOf(kFnamType);
    if (i < 0 || !binary.streams[i].bytes) return std::nullopt;
    if (auto name = decodeFnam(*binary.streams[i].bytes)) return utf16ToUtf8(*name);
    return std::nullopt;
}

std::string downloadMediaType(uint32_t type) {
    if (auto picture = browserPictureType(type)) return *picture;
    if (type == code("TIFF")) return "image/tiff";
    if (type == code("BMPf")) return "image/bmp";
    if (type == code("PDF ")) return "application/pdf";
    return "application/octet-stream";
}

bool isDescriptionStream(uint32_t type) { return type == kFnamType || type == code("SIZE"); }

}  // namespace vdhost::serve
