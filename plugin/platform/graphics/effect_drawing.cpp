#include "platform/graphics/effect_drawing.h"

#include "platform/graphics/effect_pipeline.h"
#include "platform/graphics/image_formats.h"
#include "platform/graphics/vips_call.h"
#include "platform/graphics/vips_library.h"

#include <vips/vips.h>

#include <algorithm>
#include <new>

namespace vd::platform {

namespace {

constexpr uint32_t kTiff = ImageCode("TIFF");
constexpr int32_t kNoCompression = 1;

// The importer's picture as 8-bit RGB without alpha, in an uncompressed TIFF.
util::Status RgbTiffOf(const GraphicsImporter& importer, std::vector<uint8_t>& tiff) {
    const ImageFormat* format = FindImageExporter(kTiff);
    if (!format) return util::kNoComponent;
    ImageExportSettings settings;
    settings.depth = 24;
    settings.compression = kNoCompression;
    return importer.Export(*format, settings, tiff);
}

util::Status Load(const std::vector<uint8_t>& tiff, VipsImagePtr& image) {
    VipsCall load("tiffload_buffer");
    load.SetBlob("buffer", tiff.data(), tiff.size()).SetEnum("access", VIPS_TYPE_ACCESS, VIPS_ACCESS_SEQUENTIAL);
    return load.Run(GraphicsStep::kDecoding, image);
}

util::Status Save(VipsImage* image, std::vector<uint8_t>& tiff) {
    VipsCall save("tiffsave_buffer");
    save.Set("in", image)
        .SetEnum("compression", VIPS_TYPE_FOREIGN_TIFF_COMPRESSION, VIPS_FOREIGN_TIFF_COMPRESSION_NONE);
    if (util::Status s = save.Run(GraphicsStep::kEncoding)) return s;
    return save.CopyBlob("buffer", tiff);
}

// The pipeline of the effect on the two TIFFs, written into a third.
util::Status Draw(const std::vector<uint8_t>& first, const std::vector<uint8_t>* second, const EffectRecipe& recipe,
                  std::vector<uint8_t>& out) {
    VipsImagePtr image, other;
    if (util::Status s = Load(first, image)) return s;
    if (second)
        if (util::Status s = Load(*second, other)) return s;
    if (util::Status s = DrawEffect(image, other.get(), recipe)) return s;
    return Save(image.get(), out);
}

// A picture no larger than the preview's box, the aspect kept.
util::Status Thumbnail(const std::vector<uint8_t>& tiff, int width, int height, bool exactly,
                       std::vector<uint8_t>& out) {
    VipsCall thumbnail("thumbnail_buffer");
    thumbnail.SetBlob("buffer", tiff.data(), tiff.size()).Set("width", width).Set("height", height);
    VipsImagePtr image;
    if (util::Status s = thumbnail.Run(GraphicsStep::kDecoding, image)) return s;
    if (exactly)
        if (util::Status s = ResizeExactly(image, width, height)) return s;
    return Save(image.get(), out);
}

}  // namespace

util::Status ApplyEffect(const GraphicsImporter& first, const GraphicsImporter* second, const EffectRecipe& recipe,
                         GraphicsImporter& result) {
    if (util::Status s = StartVips()) return s;
    const bool needsSecond = recipe.operation == EffectOperation::kCrossFade;
    if (needsSecond && !second) return util::kBadParameter;
    std::vector<uint8_t> drawn;
    {
        std::vector<uint8_t> a, b;
        if (util::Status s = RgbTiffOf(first, a)) return s;
        if (needsSecond)
            if (util::Status s = RgbTiffOf(*second, b)) return s;
        if (util::Status s = Draw(a, needsSecond ? &b : nullptr, recipe, drawn)) return s;
    }
    return result.OpenBytes(std::move(drawn), kTiff);
}

util::Status EffectPreview::Open(const GraphicsImporter& first, const GraphicsImporter* second) {
    if (util::Status s = StartVips()) return s;
    std::vector<uint8_t> whole;
    if (util::Status s = RgbTiffOf(first, whole)) return s;
    if (util::Status s = Thumbnail(whole, kPreviewWidth, kPreviewHeight, false, first_)) return s;
    VipsImagePtr small;
    if (util::Status s = Load(first_, small)) return s;
    const int width = small->Xsize, height = small->Ysize;
    scale_ = first.Description().width > 0 ? double(width) / first.Description().width : 1.0;
    if (!second) {
        second_ = first_;
        return util::kNoError;
    }
    if (util::Status s = RgbTiffOf(*second, whole)) return s;
    return Thumbnail(whole, width, height, true, second_);
}

util::Status EffectPreview::Render(const EffectRecipe& recipe, PreviewPixels& pixels) const {
    if (first_.empty()) return util::kBadParameter;
    VipsImagePtr image, other;
    if (util::Status s = Load(first_, image)) return s;
    if (util::Status s = Load(second_, other)) return s;
    EffectRecipe scaled = recipe;
    constexpr double kSmallestRadius = 0.3;
    if (recipe.operation == EffectOperation::kBlur) scaled.a = std::max(recipe.a * scale_, kSmallestRadius);
    if (recipe.operation == EffectOperation::kSharpen) scaled.b = std::max(recipe.b * scale_, kSmallestRadius);
    if (util::Status s = DrawEffect(image, other.get(), scaled)) return s;
    size_t length = 0;
    GlibBuffer memory(vips_image_write_to_memory(image.get(), &length));
    if (!memory) return StatusFromVipsError(GraphicsStep::kEncoding);
    if (length != size_t(image->Xsize) * size_t(image->Ysize) * 3) return util::kInternalComponentError;
    try {
        const auto* begin = static_cast<const uint8_t*>(memory.get());
        pixels.rgb.assign(begin, begin + length);
    } catch (const std::bad_alloc&) {
        return util::kMemoryFull;
    }
    pixels.width = image->Xsize;
    pixels.height = image->Ysize;
    return util::kNoError;
}

}  // namespace vd::platform
