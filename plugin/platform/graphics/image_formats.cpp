#include "platform/graphics/image_formats.h"

#include "platform/graphics/magick_functions.h"
#include "platform/graphics/vips_library.h"

#include <vips/vips.h>

namespace vd::platform {

namespace {

constexpr ImageFormat kFormats[] = {
    {ImageCode("JPEG"), "jpg", "JPEG Image", ImageEngine::kVips, "jpegsave_buffer", true},
    {ImageCode("PNGf"), "png", "PNG Image", ImageEngine::kVips, "pngsave_buffer", false},
    {ImageCode("TIFF"), "tif", "TIFF Image", ImageEngine::kVips, "tiffsave_buffer", false},
    {ImageCode("GIFf"), "gif", "GIF Image", ImageEngine::kVips, "gifsave_buffer", false},
    {ImageCode("jp2 "), "jp2", "JPEG 2000 Image", ImageEngine::kVips, "jp2ksave_buffer", true},
    {ImageCode("WEBP"), "webp", "WebP Image", ImageEngine::kVips, "webpsave_buffer", true},
    {ImageCode("heic"), "heic", "HEIF Image", ImageEngine::kVips, "heifsave_buffer", true},
    {ImageCode("PICT"), "pct", "PICT Picture", ImageEngine::kMagick, "PICT", false},
    {ImageCode("8BPS"), "psd", "Photoshop Image", ImageEngine::kMagick, "PSD", false},
    {ImageCode(".sgi"), "sgi", "SGI Image", ImageEngine::kMagick, "SGI", false},
    {ImageCode("TPIC"), "tga", "TGA Image", ImageEngine::kMagick, "TGA", false},
    {ImageCode("BMPf"), "bmp", "BMP Image", ImageEngine::kMagick, "BMP", false},
    {ImageCode("PNTG"), "pnt", "MacPaint Image", ImageEngine::kMacPaint, "", false},
    {ImageCode("qtif"), "qti", "QuickTime Image", ImageEngine::kQuickTimeImage, "", false},
};

struct Alias {
    uint32_t alias, code;
};
constexpr Alias kAliases[] = {
    {ImageCode("JFIF"), ImageCode("JPEG")}, {ImageCode("jpeg"), ImageCode("JPEG")},
    {ImageCode("GIF "), ImageCode("GIFf")}, {ImageCode("QDRW"), ImageCode("PICT")},
    {ImageCode("pict"), ImageCode("PICT")}, {ImageCode("PNG "), ImageCode("PNGf")},
    {ImageCode("png "), ImageCode("PNGf")}, {ImageCode("BMP "), ImageCode("BMPf")},
    {ImageCode("tiff"), ImageCode("TIFF")}, {ImageCode("avif"), ImageCode("heic")},
};

}  // namespace

std::span<const ImageFormat> ImageFormats() { return kFormats; }

const ImageFormat* FindImageFormat(uint32_t code) {
    for (const Alias& a : kAliases)
        if (a.alias == code) code = a.code;
    for (const ImageFormat& f : kFormats)
        if (f.code == code) return &f;
    return nullptr;
}

bool CanWriteImageFormat(const ImageFormat& format) {
    if (format.engine == ImageEngine::kMacPaint) return true;
    if (format.engine == ImageEngine::kMagick) return LoadMagick().empty();
    if (StartVips()) return false;
    if (format.code == ImageCode("heic")) LoadHeifModule();
    // The QuickTime image holds a PNG.
    const char* saver = format.engine == ImageEngine::kQuickTimeImage ? "pngsave_buffer" : format.coder;
    return vips_type_find("VipsOperation", saver) != 0;
}

}  // namespace vd::platform
