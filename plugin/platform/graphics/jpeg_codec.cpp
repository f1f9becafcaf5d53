#include "platform/graphics/jpeg_codec.h"

#include "platform/graphics/vips_library.h"
#include "platform/graphics/vips_owners.h"

#include <cstring>
#include <new>

namespace vd::platform {

GraphicsStatus EncodeJpeg(const PixelBuffer& buffer, int32_t width, int32_t height, int quality,
                          std::vector<uint8_t>& jpeg) {
    if (width < 1 || height < 1 || width > buffer.Width() || height > buffer.Height()) return kGraphicsBadParameter;
    if (GraphicsStatus s = StartVips()) return s;
    // The buffer is wrapped, not copied: it outlives every image made from it here.
    VipsImagePtr whole(vips_image_new_from_memory(buffer.Pixels(), buffer.RowBytes() * size_t(buffer.Height()),
                                                  buffer.Width(), buffer.Height(), 4, VIPS_FORMAT_UCHAR));
    if (!whole) return StatusFromVipsError(GraphicsStep::kEncoding);
    VipsImage* out = nullptr;
    if (vips_crop(whole.get(), &out, 0, 0, width, height, nullptr)) return StatusFromVipsError(GraphicsStep::kEncoding);
    VipsImagePtr region(out);
    // Four bands would be written as CMYK; the picture's colour is in the first three.
    if (vips_extract_band(region.get(), &out, 0, "n", 3, nullptr)) return StatusFromVipsError(GraphicsStep::kEncoding);
    VipsImagePtr rgb(out);
    void* encoded = nullptr;
    size_t length = 0;
    if (vips_jpegsave_buffer(rgb.get(), &encoded, &length, "Q", quality, nullptr))
        return StatusFromVipsError(GraphicsStep::kEncoding);
    GlibBuffer owner(encoded);
    try {
        jpeg.assign(static_cast<const uint8_t*>(encoded), static_cast<const uint8_t*>(encoded) + length);
    } catch (const std::bad_alloc&) {
        return kGraphicsMemoryFull;
    }
    return kGraphicsOk;
}

GraphicsStatus DecodeImage(const void* bytes, size_t size, DecodedImage& image) {
    if (!bytes || size == 0) return kGraphicsCorruptImage;
    if (GraphicsStatus s = StartVips()) return s;
    // Only the header is read here; the pixels are decoded when they are written to memory below,
    // after the size has been checked.
    VipsImagePtr source(vips_image_new_from_buffer(bytes, size, "", "access", VIPS_ACCESS_SEQUENTIAL, nullptr));
    if (!source) return StatusFromVipsError(GraphicsStep::kDecoding);
    const int64_t width = vips_image_get_width(source.get()), height = vips_image_get_height(source.get());
    if (width < 1 || height < 1) return kGraphicsCorruptImage;
    if (width * height > PixelBuffer::kMaxPixels) return kGraphicsMemoryFull;
    VipsImage* out = nullptr;
    if (vips_colourspace(source.get(), &out, VIPS_INTERPRETATION_sRGB, nullptr))
        return StatusFromVipsError(GraphicsStep::kDecoding);
    VipsImagePtr srgb(out);
    if (srgb->Bands > 3) {
        if (vips_flatten(srgb.get(), &out, nullptr)) return StatusFromVipsError(GraphicsStep::kDecoding);
        srgb.reset(out);
    }
    if (vips_cast_uchar(srgb.get(), &out, nullptr)) return StatusFromVipsError(GraphicsStep::kDecoding);
    VipsImagePtr pixels(out);
    if (pixels->Bands != 3) return kGraphicsCorruptImage;
    size_t length = 0;
    GlibBuffer memory(vips_image_write_to_memory(pixels.get(), &length));
    if (!memory) return StatusFromVipsError(GraphicsStep::kDecoding);
    if (length != size_t(width) * size_t(height) * 3) return kGraphicsCorruptImage;
    try {
        image.rgb.resize(length);
    } catch (const std::bad_alloc&) {
        return kGraphicsMemoryFull;
    }
    std::memcpy(image.rgb.data(), memory.get(), length);
    image.width = int32_t(width);
    image.height = int32_t(height);
    return kGraphicsOk;
}

}  // namespace vd::platform
