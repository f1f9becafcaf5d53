// Exporting an opened picture: the pixels are brought to 8-bit samples, to the depth asked for,
// clipped and given their resolution in one libvips pipeline, then written by the format's own
// writer. libvips's writers take the pipeline as it streams; ImageMagick and our own writers take
// the finished pixels.
#include "platform/graphics/graphics_importer.h"

#include "platform/graphics/clipped_image.h"
#include "platform/graphics/importer_state.h"
#include "platform/graphics/macpaint_codec.h"
#include "platform/graphics/magick_codec.h"
#include "platform/graphics/matrix_drawing.h"
#include "platform/graphics/pict_codec.h"
#include "platform/graphics/pixel_buffer.h"
#include "platform/graphics/png_writer.h"
#include "platform/graphics/quicktime_image.h"
#include "platform/graphics/vips_call.h"
#include "platform/graphics/vips_steps.h"
#include "platform/graphics/vector_target.h"
#include "platform/graphics/vips_library.h"

#include <vips/vips.h>

#include <algorithm>
#include <cstring>
#include <new>
#include <optional>
#include <string>

namespace vd::platform {

namespace {

constexpr int32_t kLosslessQuality = 1024;
constexpr int32_t kBestQuality = 1023;
constexpr int kDefaultQ = 75;
constexpr int32_t kPackBits = 32773;
// What a file may hold beyond its pixels: headers, tables, a picture that does not compress.
constexpr size_t kFileOverhead = size_t(1) << 20;

// The settings' 0..1023 quality on the 1..100 scale of the libraries.
int LibraryQuality(int32_t quality) {
    if (quality < 0) return kDefaultQ;
    if (quality >= kBestQuality) return 100;
    return std::clamp((quality * 100 + kBestQuality / 2) / kBestQuality, 1, 100);
}

bool WantsGrey(int32_t depth) { return (depth >= 1 && depth <= 8) || (depth >= 33 && depth <= 40); }
bool WantsBilevel(int32_t depth) { return depth == 1 || depth == 33; }
bool HasAlpha(const VipsImage* image) { return image->Bands == 2 || image->Bands == 4; }

// Alpha composed over white.
util::Status Flatten(VipsImagePtr& image) {
    if (!HasAlpha(image.get())) return util::kNoError;
    VipsCall call("flatten");
    call.Set("in", image.get()).SetDoubles("background", std::vector<double>(size_t(image->Bands - 1), 255.0));
    if (util::Status s = Apply(call, image)) return s;
    return CastToBytes(image);
}

util::Status White(int32_t width, int32_t height, int bands, VipsImagePtr& white) {
    VipsCall black("black");
    black.Set("width", width).Set("height", height).Set("bands", bands);
    if (util::Status s = black.Run(GraphicsStep::kEncoding, white)) return s;
    if (util::Status s = CastToBytes(white)) return s;
    VipsCall invert("invert");
    invert.Set("in", white.get());
    return Apply(invert, white);
}

util::Status AddOpaqueAlpha(VipsImagePtr& image) {
    VipsImagePtr alpha;
    if (util::Status s = White(image->Xsize, image->Ysize, 1, alpha)) return s;
    VipsCall call("bandjoin");
    call.SetImages("in", {image.get(), alpha.get()});
    return Apply(call, image);
}

// The pixels, ready for the writer, and everything they are read from.
// What the image reads from is declared first, so that it goes last.
struct Pipeline {
    Raster holder;               // a picture decoded in memory
    std::vector<ClipRect> clip;  // the clip, and the picture it is drawn from
    VipsImagePtr clipSource;
    VipsImagePtr image;
};

util::Status Build(const GraphicsImporter::State& state, const ImageFormat& format, const ImageExportSettings& s,
                   Pipeline& p) {
    const int32_t index = s.imageIndex > 1 ? s.imageIndex - 1 : 0;
    // A drawing reads the picture in the order the matrix takes it, not top to bottom.
    if (util::Status status = PictureOf(state, index, p.image, p.holder, state.Drawn())) return status;
    VipsImagePtr& image = p.image;
    if (int64_t(image->Xsize) * image->Ysize > kMaxImagePixels) return util::kMemoryFull;

    const VipsInterpretation type = image->Type;
    const bool plain = type == VIPS_INTERPRETATION_sRGB || type == VIPS_INTERPRETATION_B_W ||
                       type == VIPS_INTERPRETATION_MULTIBAND || type == VIPS_INTERPRETATION_RGB;
    if (image->BandFmt != VIPS_FORMAT_UCHAR || !plain || image->Bands > 4) {
        const bool grey = (type == VIPS_INTERPRETATION_B_W || type == VIPS_INTERPRETATION_GREY16) && image->Bands <= 2;
        if (util::Status status = Colourspace(image, grey ? VIPS_INTERPRETATION_B_W : VIPS_INTERPRETATION_sRGB))
            return status;
        if (util::Status status = CastToBytes(image)) return status;
    }

    if (state.Drawn()) {
        // What the drawing leaves uncovered is white, and so is what was transparent.
        if (util::Status status = Flatten(image)) return status;
        const ClipRect whole{0, 0, state.description.width, state.description.height};
        if (util::Status status = DrawThroughMatrix(image, state.sourceRectSet ? state.sourceRect : whole, state.matrix))
            return status;
    }

    const int32_t depth = s.depth;
    if (depth == 24 || WantsGrey(depth) || !s.clip.empty())
        if (util::Status status = Flatten(image)) return status;
    if (WantsGrey(depth) && image->Bands >= 3)
        if (util::Status status = Colourspace(image, VIPS_INTERPRETATION_B_W)) return status;
    if (WantsBilevel(depth)) {
        VipsCall threshold("relational_const");
        threshold.Set("left", image.get())
            .SetEnum("relational", VIPS_TYPE_OPERATION_RELATIONAL, VIPS_OPERATION_RELATIONAL_MOREEQ)
            .SetDoubles("c", {128.0});
        if (util::Status status = Apply(threshold, image)) return status;
    }
    // Formats written from whole pixels take grey, RGB or RGBA, never grey with alpha.
    const bool needsColour = (depth == 24 || depth == 32) ||
                             (format.engine != ImageEngine::kVips && image->Bands == 2);
    if (needsColour && image->Bands < 3)
        if (util::Status status = Colourspace(image, VIPS_INTERPRETATION_sRGB)) return status;
    if (depth == 32 && !HasAlpha(image.get()))
        if (util::Status status = AddOpaqueAlpha(image)) return status;

    if (!s.clip.empty()) {
        try {
            p.clip = s.clip;
        } catch (const std::bad_alloc&) {
            return util::kMemoryFull;
        }
        VipsImagePtr clipped;
        if (util::Status status = ClippedImage(image.get(), p.clip, clipped)) return status;
        p.clipSource = std::move(image);
        image = std::move(clipped);
    }

    if (s.hDpi > 0 && s.vDpi > 0) {
        VipsCall copy("copy");
        copy.Set("in", image.get()).Set("xres", s.hDpi / 25.4).Set("yres", s.vDpi / 25.4);
        if (util::Status status = Apply(copy, image)) return status;
    }
    return util::kNoError;
}

int TiffCompression(int32_t method) {
    switch (method) {
        case 1: return VIPS_FOREIGN_TIFF_COMPRESSION_NONE;
        case 5: return VIPS_FOREIGN_TIFF_COMPRESSION_LZW;
        case 7: return VIPS_FOREIGN_TIFF_COMPRESSION_JPEG;
        case 8: return VIPS_FOREIGN_TIFF_COMPRESSION_DEFLATE;
        case kPackBits: return VIPS_FOREIGN_TIFF_COMPRESSION_PACKBITS;
        default: return -1;
    }
}

util::Status SaveWithVips(VipsImage* image, const char* saver, const ImageFormat& format, const ImageExportSettings& s,
                          int q, std::vector<uint8_t>& out) {
    // The saver that writes to a target writes straight into out; the one that writes to memory
    // stays for a library without it.
    const std::string_view name = saver;
    if (name == "pngsave_buffer" && !WantsBilevel(s.depth) && WritesAsPlainPng(image)) return WritePlainPng(image, out);
    std::string toTarget(name.substr(0, name.rfind('_')));
    toTarget += "_target";
    const bool targeted = vips_type_find("VipsOperation", toTarget.c_str()) != 0;
    const size_t expected = size_t(image->Xsize) * size_t(image->Ysize) * size_t(image->Bands) + kFileOverhead;
    std::optional<VectorTarget> target;
    if (targeted) {
        // An uncompressed TIFF takes all the room; other files a part of it.
        const bool filled = name == "tiffsave_buffer" && (s.compression == -1 || s.compression == 1);
        target.emplace(out, expected, filled);
        if (target->Status()) return target->Status();
        if (!target->Target()) return StatusFromVipsError(GraphicsStep::kEncoding);
    }
    VipsCall save(targeted ? toTarget.c_str() : saver);
    save.Set("in", image);
    if (targeted) save.SetObject("target", VIPS_TYPE_TARGET, target->Target());
    if (format.lossy) {
        save.Set("Q", q);
        if (s.quality >= kLosslessQuality && name != "jpegsave_buffer") save.SetBool("lossless", true);
    }
    if (name == "tiffsave_buffer") {
        if (const int compression = TiffCompression(s.compression); compression >= 0)
            save.SetEnum("compression", VIPS_TYPE_FOREIGN_TIFF_COMPRESSION, compression);
        if (s.compression == 7) save.Set("Q", q);
    }
    if ((name == "tiffsave_buffer" || name == "pngsave_buffer") && WantsBilevel(s.depth)) save.Set("bitdepth", 1);
    const util::Status status = save.Run(GraphicsStep::kEncoding);
    if (targeted) return target->Status() ? target->Status() : status;
    if (status) return status;
    return save.CopyBlob("buffer", out);
}

util::Status PixelsOf(VipsImage* image, Raster& raster) {
    if (int64_t(image->Xsize) * image->Ysize > PixelBuffer::kMaxPixels) return util::kMemoryFull;
    size_t length = 0;
    GlibBuffer memory(vips_image_write_to_memory(image, &length));
    if (!memory) return StatusFromVipsError(GraphicsStep::kEncoding);
    raster.width = image->Xsize;
    raster.height = image->Ysize;
    raster.bands = image->Bands;
    raster.xDpi = image->Xres * 25.4;
    raster.yDpi = image->Yres * 25.4;
    try {
        const auto* begin = static_cast<const uint8_t*>(memory.get());
        raster.pixels.assign(begin, begin + length);
    } catch (const std::bad_alloc&) {
        return util::kMemoryFull;
    }
    return length == raster.RowBytes() * size_t(raster.height) ? util::kNoError : util::kInternalComponentError;
}

// A picture of our own layout is packed band by band as libvips's threads finish them, never held
// whole beside the file.
util::Status StreamPict(VipsImage* image, std::vector<uint8_t>& out) {
    const double hDpi = image->Xres > 1.0 ? image->Xres * 25.4 : 72, vDpi = image->Yres > 1.0 ? image->Yres * 25.4 : 72;
    PictWriter writer;
    if (util::Status status = writer.Begin(image->Xsize, image->Ysize, hDpi, vDpi, out)) return status;
    struct Sink {
        PictWriter& writer;
        util::Status status = util::kNoError;
    } sink{writer};
    const VipsRegionWrite write = [](VipsRegion* region, VipsRect* area, void* a) {
        auto& to = *static_cast<Sink*>(a);
        // The region's rows as VIPS_REGION_ADDR finds them, for 8-bit samples.
        const size_t stride = size_t(VIPS_REGION_LSKIP(region));
        const auto* first = reinterpret_cast<const uint8_t*>(region->data) +
                            size_t(area->top - region->valid.top) * stride +
                            size_t(area->left - region->valid.left) * size_t(region->im->Bands);
        to.status = to.writer.AddRows(first, stride, area->height);
        return to.status == util::kNoError ? 0 : -1;
    };
    if (vips_sink_disc(image, write, &sink) != 0) {
        const util::Status failure = StatusFromVipsError(GraphicsStep::kEncoding);
        return sink.status != util::kNoError ? sink.status : failure;
    }
    return writer.Finish();
}

util::Status Write(const GraphicsImporter::State& state, const ImageFormat& format, const ImageExportSettings& s,
                   int q, std::vector<uint8_t>& out) {
    Pipeline p;
    if (util::Status status = Build(state, format, s, p)) return status;
    VipsImage* image = p.image.get();
    switch (format.engine) {
        case ImageEngine::kVips: return SaveWithVips(image, format.coder, format, s, q, out);
        case ImageEngine::kQuickTimeImage: {
            std::vector<uint8_t> png;
            if (util::Status status = SaveWithVips(image, "pngsave_buffer", format, s, q, png)) return status;
            QuickTimeImage description;
            description.compressor = ImageCode("png ");
            description.width = image->Xsize;
            description.height = image->Ysize;
            description.depth = int16_t(image->Bands >= 3 ? image->Bands * 8 : 32 + 8);  // grey is 40 deep
            description.hDpi = image->Xres > 1.0 ? image->Xres * 25.4 : 72;
            description.vDpi = image->Yres > 1.0 ? image->Yres * 25.4 : 72;
            description.name = "PNG";
            return WriteQuickTimeImage(description, png.data(), png.size(), out);
        }
        case ImageEngine::kMagick:
            if (format.code == ImageCode("PICT") && image->Bands == 3) return StreamPict(image, out);
            [[fallthrough]];
        case ImageEngine::kMacPaint: {
            Raster raster;
            if (util::Status status = PixelsOf(image, raster)) return status;
            p = Pipeline{};  // the decoded picture is no longer needed beside its copy
            if (format.engine == ImageEngine::kMacPaint) return EncodeMacPaint(raster, out);
            return MagickEncode(raster, format.coder, s.compression == kPackBits, out);
        }
    }
    return util::kInternalComponentError;
}

util::Status OriginalBytes(const GraphicsImporter::State& state, std::vector<uint8_t>& out) {
    if (!state.bytes.empty()) {
        try {
            out = state.bytes;
        } catch (const std::bad_alloc&) {
            return util::kMemoryFull;
        }
        return util::kNoError;
    }
    FILE* file = std::fopen(state.path.c_str(), "rb");
    if (!file) return util::kFileNotFound;
    std::unique_ptr<FILE, int (*)(FILE*)> owner(file, &std::fclose);
    std::fseek(file, 0, SEEK_END);
    const long size = std::ftell(file);
    std::fseek(file, 0, SEEK_SET);
    if (size < 0 || size > (long(1) << 30)) return util::kMemoryFull;
    try {
        out.resize(size_t(size));
    } catch (const std::bad_alloc&) {
        return util::kMemoryFull;
    }
    return std::fread(out.data(), 1, out.size(), file) == out.size() ? util::kNoError : util::kIoError;
}

}  // namespace

util::Status GraphicsImporter::Export(const ImageFormat& format, const ImageExportSettings& s,
                                      std::vector<uint8_t>& out) const {
    out.clear();
    if (util::Status status = StartVips()) return status;
    // A picture that is already what is asked for is passed on as it is, without a second loss.
    if (s.dontRecompress && state_->format == &format && s.imageIndex <= 1 && s.depth == -1 && s.clip.empty() &&
        !state_->Drawn())
        return OriginalBytes(*state_, out);
    if (!(s.targetBytes > 0 && format.lossy)) return Write(*state_, format, s, LibraryQuality(s.quality), out);

    // The best quality whose file fits the size asked for, else the smallest file there is.
    int low = 1, high = 100;
    std::vector<uint8_t> best, attempt;
    while (low <= high) {
        const int q = (low + high) / 2;
        if (util::Status status = Write(*state_, format, s, q, attempt)) return status;
        if (attempt.size() <= size_t(s.targetBytes)) {
            best.swap(attempt);
            low = q + 1;
        } else {
            high = q - 1;
        }
    }
    if (best.empty()) return Write(*state_, format, s, 1, out);
    out.swap(best);
    return util::kNoError;
}

}  // namespace vd::platform
