#include "platform/graphics/magick_codec.h"

#include "platform/graphics/magick_functions.h"
#include "platform/graphics/vips_library.h"
#include "platform/graphics/pixel_buffer.h"

#include <magick/MagickCore.h>

#include <cstring>
#include <memory>
#include <mutex>
#include <new>

namespace vd::platform {

namespace {

struct ExceptionRelease {
    void operator()(ExceptionInfo* e) const { DestroyExceptionInfo(e); }
};
struct ImageInfoRelease {
    void operator()(ImageInfo* i) const { DestroyImageInfo(i); }
};
struct ImageListRelease {
    void operator()(Image* i) const { DestroyImageList(i); }
};
struct MagickMemoryRelease {
    void operator()(void* m) const { RelinquishMagickMemory(m); }
};
using ExceptionPtr = std::unique_ptr<ExceptionInfo, ExceptionRelease>;
using ImageInfoPtr = std::unique_ptr<ImageInfo, ImageInfoRelease>;
using ImageListPtr = std::unique_ptr<Image, ImageListRelease>;
using MagickMemory = std::unique_ptr<void, MagickMemoryRelease>;

util::Status StartMagick() {
    static std::once_flag once;
    static bool started = false;
    std::call_once(once, [] {
        if (!LoadMagick().empty()) return;
        MagickCoreGenesis(nullptr, MagickFalse);
        // A header can claim any size; the coders check these limits before they allocate, so a
        // hostile file costs no more memory than a picture we would accept.
        SetMagickResourceLimit(WidthResource, PixelBuffer::kMaxSide);
        SetMagickResourceLimit(HeightResource, PixelBuffer::kMaxSide);
        SetMagickResourceLimit(AreaResource, MagickSizeType(PixelBuffer::kMaxPixels));
        SetMagickResourceLimit(ListLengthResource, 1024);
        // Our own threads call in; ImageMagick's thread pool would only compete with them.
        SetMagickResourceLimit(ThreadResource, 1);
        started = true;
    });
    return started ? util::kNoError : util::kNoComponent;
}

bool Failed(const ExceptionInfo* e) { return e->severity >= ErrorException; }

util::Status FailureOf(const ExceptionInfo* e, util::Status otherwise) {
    const char* reason = e->reason ? e->reason : "";
    if (std::strstr(reason, "limit") || std::strstr(reason, "MemoryAllocationFailed")) return util::kMemoryFull;
    return otherwise;
}

ImageInfoPtr InfoFor(const char* coder) {
    ImageInfoPtr info(AcquireImageInfo());
    std::strncpy(info->magick, coder, MaxTextExtent - 1);
    // With the coder as the file name's prefix ImageMagick takes the format as given and never
    // looks at the bytes to guess another.
    std::snprintf(info->filename, MaxTextExtent, "%s:picture", coder);
    return info;
}

const char* MapOf(int bands) { return bands == 4 ? "RGBA" : bands == 3 ? "RGB" : "I"; }

}  // namespace

util::Status MagickDecode(const void* bytes, size_t size, const char* coder, int32_t index, Raster& raster,
                          int32_t& imageCount) {
    if (!bytes || size == 0) return util::kCorruptData;
    if (StartMagick()) return util::kNoComponent;
    ExceptionPtr exception(AcquireExceptionInfo());
    ImageInfoPtr info = InfoFor(coder);
    ImageListPtr images(BlobToImage(info.get(), bytes, size, exception.get()));
    if (!images || Failed(exception.get())) return FailureOf(exception.get(), util::kCorruptData);
    imageCount = int32_t(GetImageListLength(images.get()));
    if (index < 0 || index >= imageCount) return util::kCorruptData;
    const Image* image = GetImageFromList(images.get(), index);
    if (!image || image->columns < 1 || image->rows < 1) return util::kCorruptData;
    if (image->columns > size_t(PixelBuffer::kMaxSide) || image->rows > size_t(PixelBuffer::kMaxSide) ||
        int64_t(image->columns) * int64_t(image->rows) > PixelBuffer::kMaxPixels)
        return util::kMemoryFull;
    Raster out;
    out.width = int32_t(image->columns);
    out.height = int32_t(image->rows);
    out.bands = image->matte ? 4 : 3;
    const double perInch = image->units == PixelsPerCentimeterResolution ? 2.54 : 1.0;
    out.xDpi = image->x_resolution * perInch;
    out.yDpi = image->y_resolution * perInch;
    try {
        out.pixels.resize(out.RowBytes() * size_t(out.height));
    } catch (const std::bad_alloc&) {
        return util::kMemoryFull;
    }
    if (!ExportImagePixels(image, 0, 0, image->columns, image->rows, MapOf(out.bands), CharPixel, out.pixels.data(),
                           exception.get()))
        return FailureOf(exception.get(), util::kCorruptData);
    raster = std::move(out);
    return util::kNoError;
}

util::Status MagickEncode(const Raster& raster, const char* coder, bool runLength, std::vector<uint8_t>& file) {
    if (raster.width < 1 || raster.height < 1 || raster.bands == 2) return util::kBadParameter;
    if (StartMagick()) return util::kNoComponent;
    ExceptionPtr exception(AcquireExceptionInfo());
    ImageListPtr image(ConstituteImage(size_t(raster.width), size_t(raster.height), MapOf(raster.bands), CharPixel,
                                       raster.pixels.data(), exception.get()));
    if (!image || Failed(exception.get())) return FailureOf(exception.get(), util::kInternalComponentError);
    image->matte = raster.bands == 4 ? MagickTrue : MagickFalse;
    if (raster.xDpi > 0 && raster.yDpi > 0) {
        image->units = PixelsPerInchResolution;
        image->x_resolution = raster.xDpi;
        image->y_resolution = raster.yDpi;
    }
    ImageInfoPtr info = InfoFor(coder);
    info->compression = image->compression = runLength ? RLECompression : NoCompression;
    size_t length = 0;
    MagickMemory blob(ImageToBlob(info.get(), image.get(), &length, exception.get()));
    if (!blob || Failed(exception.get())) return FailureOf(exception.get(), util::kInternalComponentError);
    try {
        const auto* begin = static_cast<const uint8_t*>(blob.get());
        file.assign(begin, begin + length);
    } catch (const std::bad_alloc&) {
        return util::kMemoryFull;
    }
    return util::kNoError;
}

}  // namespace vd::platform
