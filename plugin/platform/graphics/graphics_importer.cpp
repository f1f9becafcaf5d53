#include "platform/graphics/graphics_importer.h"

#include "platform/graphics/image_signature.h"
#include "platform/graphics/importer_state.h"
#include "platform/graphics/macpaint_codec.h"
#include "platform/graphics/magick_codec.h"
#include "platform/graphics/pict_codec.h"
#include "platform/graphics/pict_image.h"
#include "platform/graphics/quicktime_image.h"
#include "platform/graphics/vips_call.h"
#include "platform/graphics/vips_library.h"
#include "platform/common/unique_fd.h"

#include <vips/vips.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <new>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace vd::platform {

namespace {

// A whole file read for a format that is decoded in memory; larger files are refused unread.
constexpr uint64_t kLargestWholeFile = uint64_t(1) << 30;
constexpr size_t kSignatureBytes = 1024;

util::Status ReadFile(const std::string& path, std::vector<uint8_t>& bytes, size_t limit) {
    UniqueFd fd(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    if (!fd.Valid()) return errno == ENOENT ? util::kFileNotFound : util::kIoError;
    struct stat info {};
    if (::fstat(fd.Get(), &info) != 0 || !S_ISREG(info.st_mode)) return util::kNotAFile;
    const size_t wanted = std::min<uint64_t>(uint64_t(info.st_size), limit);
    if (limit == kLargestWholeFile && uint64_t(info.st_size) > kLargestWholeFile) return util::kMemoryFull;
    try {
        bytes.resize(wanted);
    } catch (const std::bad_alloc&) {
        return util::kMemoryFull;
    }
    size_t done = 0;
    while (done < wanted) {
        const ssize_t n = ::read(fd.Get(), bytes.data() + done, wanted - done);
        if (n < 0 && errno == EINTR) continue;
        if (n < 0) return util::kIoError;
        if (n == 0) break;
        done += size_t(n);
    }
    bytes.resize(done);
    return util::kNoError;
}

bool IsMagickLoader(const char* loader) { return std::strstr(loader, "Magick") || std::strstr(loader, "magick"); }

// The formats libvips reads that are ours to name: any other loader it finds is not one we offer.
uint32_t TypeOfLoader(const char* loader) {
    struct Known {
        const char* word;
        uint32_t code;
    };
    constexpr Known kKnown[] = {{"Jpeg", ImageCode("JPEG")}, {"Png", ImageCode("PNGf")}, {"Tiff", ImageCode("TIFF")},
                                {"Gif", ImageCode("GIFf")},  {"Jp2k", ImageCode("jp2 ")}, {"Webp", ImageCode("WEBP")},
                                {"Heif", ImageCode("heic")}, {"jpeg", ImageCode("JPEG")}, {"png", ImageCode("PNGf")},
                                {"tiff", ImageCode("TIFF")}, {"gif", ImageCode("GIFf")},  {"jp2k", ImageCode("jp2 ")},
                                {"webp", ImageCode("WEBP")}, {"heif", ImageCode("heic")}};
    if (IsMagickLoader(loader)) return 0;
    for (const Known& k : kKnown)
        if (std::strstr(loader, k.word)) return k.code;
    return 0;
}

void DescribeRaster(const Raster& raster, ImageDescription& d) {
    d.width = raster.width;
    d.height = raster.height;
    d.depth = int16_t(raster.bands * 8);
    if (raster.xDpi > 0) d.hDpi = raster.xDpi;
    if (raster.yDpi > 0) d.vDpi = raster.yDpi;
}

util::Status OpenWithVips(GraphicsImporter::State& s) {
    if (util::Status status = StartVips()) return status;
    // A HEIF picture, or one whose signature we do not know, may need libvips's HEIF module to be found.
    if (!s.format || s.format->code == ImageCode("heic")) LoadHeifModule();
    const uint8_t* data = s.bytes.data() + s.dataOffset;
    const char* loader = s.path.empty() ? vips_foreign_find_load_buffer(data, s.dataSize)
                                        : vips_foreign_find_load(s.path.c_str());
    if (!loader || TypeOfLoader(loader) == 0) {
        StatusFromVipsError(GraphicsStep::kDecoding);  // clears the library's complaint
        return util::kNoCodec;
    }
    s.loader = loader;
    if (!s.format) s.format = FindImageFormat(TypeOfLoader(loader));
    VipsImagePtr image;
    Raster unused;
    if (util::Status status = PictureOf(s, 0, image, unused)) return status;
    ImageDescription& d = s.description;
    d.width = vips_image_get_width(image.get());
    d.height = vips_image_get_height(image.get());
    const int bits = image->BandFmt == VIPS_FORMAT_UCHAR || image->BandFmt == VIPS_FORMAT_CHAR ? 8 : 16;
    d.depth = int16_t(std::min(image->Bands * bits, 64));
    // libvips keeps pixels per millimetre and says 1 (25.4 dpi) when the file says nothing.
    if (image->Xres > 1.0 && image->Yres > 1.0) d.hDpi = image->Xres * 25.4, d.vDpi = image->Yres * 25.4;
    d.imageCount = std::max(1, vips_image_get_n_pages(image.get()));
    if (int64_t(d.width) * d.height > kMaxImagePixels) return util::kMemoryFull;
    return util::kNoError;
}

util::Status Open(GraphicsImporter::State& s, uint32_t type) {
    const uint8_t* bytes = s.bytes.data();
    if (s.path.empty() && s.bytes.empty()) return util::kCorruptData;
    s.format = FindImageFormat(type);
    if (!s.format && !s.bytes.empty()) s.format = FindImageFormat(ImageTypeFromSignature(bytes, s.bytes.size()));
    s.dataOffset = 0;
    s.dataSize = s.bytes.size();
    const ImageEngine engine = s.format ? s.format->engine : ImageEngine::kVips;
    util::Status status = util::kNoError;
    switch (engine) {
        case ImageEngine::kVips: status = OpenWithVips(s); break;
        case ImageEngine::kMagick:
            // A picture always follows a 512-byte header here, whatever the header holds (a VD
            // image leaves its type code there). ImageMagick takes "PICT" at the very start for
            // the 4-byte header of pictures from other systems and would read the header as the
            // picture, so the code goes.
            if (s.format->code == ImageCode("PICT") && s.bytes.size() > 512 && std::memcmp(bytes, "PICT", 4) == 0)
                std::memset(s.bytes.data(), 0, 4);
            if (s.format->code == ImageCode("PICT") && ReadPictLayout(bytes, s.bytes.size(), s.pict)) {
                s.ownPict = true;
                s.description.width = s.pict.width;
                s.description.height = s.pict.height;
                s.description.depth = 24;
                s.description.hDpi = s.pict.hDpi;
                s.description.vDpi = s.pict.vDpi;
                if (int64_t(s.pict.width) * s.pict.height > kMaxImagePixels) status = util::kMemoryFull;
                break;
            }
            status = MagickDecode(bytes, s.bytes.size(), s.format->coder, 0, s.first, s.description.imageCount);
            if (status == util::kNoError) DescribeRaster(s.first, s.description);
            break;
        case ImageEngine::kMacPaint:
            status = DecodeMacPaint(bytes, s.bytes.size(), s.first);
            if (status == util::kNoError) DescribeRaster(s.first, s.description);
            break;
        case ImageEngine::kQuickTimeImage: {
            QuickTimeImage inner;
            if ((status = ReadQuickTimeImage(bytes, s.bytes.size(), inner))) break;
            s.dataOffset = inner.dataOffset;
            s.dataSize = inner.dataSize;
            const ImageFormat* container = s.format;
            if ((status = OpenWithVips(s))) break;
            s.format = container;
            s.description.hDpi = inner.hDpi;
            s.description.vDpi = inner.vDpi;
            break;
        }
    }
    if (status) return status;
    if (!s.format) return util::kNoCodec;
    s.description.type = s.format->code;
    s.description.name = s.format->description;
    return util::kNoError;
}

}  // namespace

util::Status PictureOf(const GraphicsImporter::State& s, int32_t index, VipsImagePtr& image, Raster& holder,
                       bool randomAccess) {
    if (util::Status status = StartVips()) return status;
    if (index < 0 || index >= s.description.imageCount) return util::kBadParameter;
    const ImageEngine engine = s.format ? s.format->engine : ImageEngine::kVips;
    if (engine == ImageEngine::kVips || engine == ImageEngine::kQuickTimeImage) {
        VipsCall load(s.loader.c_str());
        if (s.path.empty() || engine == ImageEngine::kQuickTimeImage)
            load.SetBlob("buffer", s.bytes.data() + s.dataOffset, s.dataSize);
        else
            load.Set("filename", s.path.c_str());
        load.SetEnum("access", VIPS_TYPE_ACCESS, randomAccess ? VIPS_ACCESS_RANDOM : VIPS_ACCESS_SEQUENTIAL);
        if (index > 0) load.Set("page", index);
        return load.Run(GraphicsStep::kDecoding, image);
    }
    if (s.ownPict) return PictImage(s.bytes.data(), s.pict, randomAccess, image);
    const Raster* raster = &s.first;
    if (index > 0) {
        int32_t count = 0;
        if (util::Status status = MagickDecode(s.bytes.data(), s.bytes.size(), s.format->coder, index, holder, count))
            return status;
        raster = &holder;
    }
    image.reset(vips_image_new_from_memory(raster->pixels.data(), raster->pixels.size(), raster->width,
                                           raster->height, raster->bands, VIPS_FORMAT_UCHAR));
    if (!image) return StatusFromVipsError(GraphicsStep::kDecoding);
    return util::kNoError;
}

GraphicsImporter::GraphicsImporter() : state_(std::make_unique<State>()) {}
GraphicsImporter::~GraphicsImporter() = default;
GraphicsImporter::GraphicsImporter(GraphicsImporter&&) noexcept = default;
GraphicsImporter& GraphicsImporter::operator=(GraphicsImporter&&) noexcept = default;

util::Status GraphicsImporter::OpenBytes(std::vector<uint8_t> bytes, uint32_t type) {
    state_ = std::make_unique<State>();
    state_->bytes = std::move(bytes);
    return Open(*state_, type);
}

util::Status GraphicsImporter::OpenFile(const std::string& path) {
    state_ = std::make_unique<State>();
    state_->sourceFile = path;
    std::vector<uint8_t> head;
    if (util::Status status = ReadFile(path, head, kSignatureBytes)) return status;
    uint32_t type = ImageTypeFromSignature(head.data(), head.size());
    if (!type) type = ImageTypeFromExtension(path);
    const ImageFormat* format = FindImageFormat(type);
    if (!format || format->engine == ImageEngine::kVips) {
        state_->path = path;  // libvips streams it from the file (or says what else it is)
    } else if (util::Status status = ReadFile(path, state_->bytes, kLargestWholeFile)) {
        return status;
    }
    return Open(*state_, type);
}

util::Status GraphicsImporter::OpenUrl(const std::string& url, const WebLimits& limits, std::string& detail) {
    state_ = std::make_unique<State>();
    std::vector<uint8_t> body;
    if (util::Status status = FetchUrl(url, limits, body, detail)) return status;
    uint32_t type = ImageTypeFromSignature(body.data(), body.size());
    if (!type) type = ImageTypeFromExtension(url.substr(0, url.find_first_of("?#")));
    const util::Status status = OpenBytes(std::move(body), type);
    state_->webAddress = url;
    return status;
}

const ImageDescription& GraphicsImporter::Description() const { return state_->description; }

void GraphicsImporter::SetSourceRect(const ClipRect& rect) {
    state_->sourceRect = rect;
    state_->sourceRectSet = true;
}

ClipRect GraphicsImporter::SourceRect() const {
    if (state_->sourceRectSet) return state_->sourceRect;
    return {0, 0, state_->description.width, state_->description.height};
}

void GraphicsImporter::SetMatrix(const DrawMatrix& matrix) { state_->matrix = matrix; }

int64_t GraphicsImporter::DataSize() const {
    if (state_->path.empty()) return int64_t(state_->dataSize);
    struct stat info {};
    return ::stat(state_->path.c_str(), &info) == 0 ? int64_t(info.st_size) : 0;
}
const std::string& GraphicsImporter::FilePath() const { return state_->sourceFile; }
const std::string& GraphicsImporter::WebAddress() const { return state_->webAddress; }

const ImageFormat* FindImageExporter(uint32_t type) {
    const ImageFormat* format = FindImageFormat(type);
    return format && CanWriteImageFormat(*format) ? format : nullptr;
}

}  // namespace vd::platform
