#include "platform/graphics/image_signature.h"

#include "platform/graphics/image_formats.h"
#include "platform/graphics/macpaint_codec.h"

#include <cctype>
#include <cstring>
#include <string>

namespace vd::platform {

namespace {

bool StartsWith(const uint8_t* bytes, size_t size, size_t at, const char* text, size_t n) {
    return size >= at + n && std::memcmp(bytes + at, text, n) == 0;
}

}  // namespace

uint32_t ImageTypeFromSignature(const uint8_t* b, size_t n) {
    if (StartsWith(b, n, 0, "\xFF\xD8\xFF", 3)) return ImageCode("JPEG");
    if (StartsWith(b, n, 0, "\x89PNG\r\n\x1A\n", 8)) return ImageCode("PNGf");
    if (StartsWith(b, n, 0, "GIF87a", 6) || StartsWith(b, n, 0, "GIF89a", 6)) return ImageCode("GIFf");
    if (StartsWith(b, n, 0, "II*\0", 4) || StartsWith(b, n, 0, "MM\0*", 4)) return ImageCode("TIFF");
    if (StartsWith(b, n, 0, "\0\0\0\x0CjP  \r\n\x87\n", 12) || StartsWith(b, n, 0, "\xFF\x4F\xFF\x51", 4))
        return ImageCode("jp2 ");
    if (StartsWith(b, n, 0, "RIFF", 4) && StartsWith(b, n, 8, "WEBP", 4)) return ImageCode("WEBP");
    if (StartsWith(b, n, 4, "ftyp", 4) &&
        (StartsWith(b, n, 8, "heic", 4) || StartsWith(b, n, 8, "heix", 4) || StartsWith(b, n, 8, "mif1", 4) ||
         StartsWith(b, n, 8, "avif", 4)))
        return ImageCode("heic");
    if (StartsWith(b, n, 0, "8BPS", 4)) return ImageCode("8BPS");
    if (StartsWith(b, n, 0, "\x01\xDA", 2)) return ImageCode(".sgi");
    if (StartsWith(b, n, 0, "BM", 2) && n >= 26) return ImageCode("BMPf");
    if (StartsWith(b, n, 4, "idsc", 4) || StartsWith(b, n, 4, "idat", 4)) return ImageCode("qtif");
    // A version 2 picture after the 512-byte file header: its size and frame, then the version opcode.
    if (StartsWith(b, n, 522, "\x00\x11\x02\xFF", 4)) return ImageCode("PICT");
    if (HasMacBinaryPaintHeader(b, n)) return ImageCode("PNTG");
    return 0;
}

uint32_t ImageTypeFromExtension(std::string_view path) {
    const size_t dot = path.rfind('.');
    if (dot == std::string_view::npos || path.find('/', dot) != std::string_view::npos) return 0;
    std::string extension(path.substr(dot + 1));
    for (char& c : extension) c = char(std::tolower(static_cast<unsigned char>(c)));
    if (extension == "pict" || extension == "pic") return ImageCode("PICT");
    if (extension == "pntg" || extension == "mac") return ImageCode("PNTG");
    if (extension == "jpeg" || extension == "jpe") return ImageCode("JPEG");
    if (extension == "tiff") return ImageCode("TIFF");
    if (extension == "heif" || extension == "avif") return ImageCode("heic");
    if (extension == "qtif") return ImageCode("qtif");
    for (const ImageFormat& f : ImageFormats())
        if (extension == f.extension) return f.code;
    return 0;
}

}  // namespace vd::platform
