#include "platform/graphics/jpeg_codec.h"

#include "platform/graphics/vips_call.h"
#include "platform/graphics/vips_library.h"
#include "platform/graphics/vips_owners.h"

#include <cstring>
#include <new>
#include <utility>

namespace vd::platform {

util::Status EncodeJpeg(const PixelBuffer& buffer, int32_t width, int32_t height, int quality,
                          std::vector<uint8_t>& jpeg) {
    if (width < 1 || height < 1 || width > buffer.Width() || height > buffer.Height()) return util::kBadParameter;
    if (util::Status s = StartVips()) return s;
    // The buffer is wrapped, not copied: it outlives every image made from it here.
    VipsImagePtr whole(vips_image_new_from_memory(buffer.Pixels(), buffer.RowBytes() * size_t(buffer.Height()),
                                                  buffer.Width(), buffer.Height(), 4, VIPS_FORMAT_UCHAR));
    if (!whole) return StatusFromVipsError(GraphicsStep::kEncoding);
    VipsImagePtr region, rgb;
    VipsCall crop("crop");
    crop.Set("input", whole.get()).Set("left", 0).Set("top", 0).Set("width", width).Set("height", height);
    if (util::Status s = crop.Run(GraphicsStep::kEncoding, region)) return s;
    // Four bands would be written as CMYK; the picture's colour is in the first three.
    VipsCall colour("extract_band");
    colour.Set("in", region.get()).Set("band", 0).Set("n", 3);
    if (util::Status s = colour.Run(GraphicsStep::kEncoding, rgb)) return s;
    VipsCall save("jpegsave_buffer");
    save.Set("in", rgb.get()).Set("Q", quality);
    if (util::Status s = save.Run(GraphicsStep::kEncoding)) return s;
    return save.CopyBlob("buffer", jpeg);
}

util::Status DecodeImage(const void* bytes, size_t size, DecodedImage& image) {
    if (!bytes || size == 0) return util::kCorruptData;
    if (util::Status s = StartVips()) return s;
    const char* loader = vips_foreign_find_load_buffer(bytes, size);
    if (!loader) return StatusFromVipsError(GraphicsStep::kDecoding);
    // Only the header is read here; the pixels are decoded when they are written to memory below,
    // after the size has been checked.
    VipsImagePtr source;
    VipsCall load(loader);
    load.SetBlob("buffer", bytes, size).SetEnum("access", VIPS_TYPE_ACCESS, VIPS_ACCESS_SEQUENTIAL);
    if (util::Status s = load.Run(GraphicsStep::kDecoding, source)) return s;
    const int64_t width = vips_image_get_width(source.get()), height = vips_image_get_height(source.get());
    if (width < 1 || height < 1) return util::kCorruptData;
    if (width * height > PixelBuffer::kMaxPixels) return util::kMemoryFull;
    VipsImagePtr srgb, pixels;
    VipsCall colourspace("colourspace");
    colourspace.Set("in", source.get()).SetEnum("space", VIPS_TYPE_INTERPRETATION, VIPS_INTERPRETATION_sRGB);
    if (util::Status s = colourspace.Run(GraphicsStep::kDecoding, srgb)) return s;
    if (srgb->Bands > 3) {
        VipsImagePtr flat;
        VipsCall flatten("flatten");
        flatten.Set("in", srgb.get());
        if (util::Status s = flatten.Run(GraphicsStep::kDecoding, flat)) return s;
        srgb = std::move(flat);
    }
    VipsCall cast("cast");
    cast.Set("in", srgb.get()).SetEnum("format", VIPS_TYPE_BAND_FORMAT, VIPS_FORMAT_UCHAR);
    if (util::Status s = cast.Run(GraphicsStep::kDecoding, pixels)) return s;
    if (pixels->Bands != 3) return util::kCorruptData;
    size_t length = 0;
    GlibBuffer memory(vips_image_write_to_memory(pixels.get(), &length));
    if (!memory) return StatusFromVipsError(GraphicsStep::kDecoding);
    if (length != size_t(width) * size_t(height) * 3) return util::kCorruptData;
    try {
        image.rgb.resize(length);
    } catch (const std::bad_alloc&) {
        return util::kMemoryFull;
    }
    std::memcpy(image.rgb.data(), memory.get(), length);
    image.width = int32_t(width);
    image.height = int32_t(height);
    return util::kNoError;
}

}  // namespace vd::platform
