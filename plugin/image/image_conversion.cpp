#include "image/image_conversion.h"

#include "container/stream_types.h"
#include "container/streams.h"
#include "fmapi/args/host_binary.h"
#include "fmapi/args/results.h"
#include "image/container_importer.h"
#include "image/vd_image.h"
#include "platform/graphics/image_formats.h"
#include "util/status_codes.h"

#include <algorithm>

namespace vd::image {

namespace {

constexpr size_t kPictHeaderSize = 512;
constexpr int32_t kPackBits = 32773;

// The kept settings as the exporter takes them, applied in the order they are kept: interlace
// goes to the same compression method as PackBits, after it, and so overrides it.
platform::ImageExportSettings ExporterSettings(const ConversionSettings& c) {
    platform::ImageExportSettings s;
    s.depth = c.depth;
    if (c.hres != -1.0) s.hDpi = c.hres, s.vDpi = c.vres;
    if (c.targetBytes != -1) s.targetBytes = c.targetBytes;
    else s.quality = c.quality;
    s.imageIndex = c.imageIndex;
    if (c.transcode != -1) s.dontRecompress = c.transcode != 0;
    if (c.packBits != -1) s.compression = c.packBits != 0 ? kPackBits : 1;
    if (c.interlace != -1) s.compression = c.interlace != 0 ? 1 : 0;
    return s;
}

uint16_t SizeField(int32_t value) { return uint16_t(std::clamp(value, 0, 0xFFFF)); }

}  // namespace

fmapi::Outcome ConvertImage(const FMX_Data* parameter, uint32_t type, const ConversionSettings& settings) {
    platform::GraphicsImporter importer;
    if (auto failure = OpenImporterForContainer(parameter, importer)) return std::move(*failure);
    if (type == 0) type = importer.Description().type;
    const platform::ImageFormat* format = platform::FindImageExporter(type);
    if (!format) return fmapi::Outcome::Failure(util::kNoComponent, "Could not find QT exporter for specified image type");
    const int32_t width = importer.Description().width, height = importer.Description().height;

    container::Bytes exported;
    if (util::Status s = importer.Export(*format, ExporterSettings(settings), exported))
        return fmapi::Outcome::Failure(s, "Conversion failed");
    size_t skip = 0;
    if (type == container::kPictStream || type == container::FourCC("pict"))
        skip = std::min(kPictHeaderSize, exported.size());

    fmapi::OwnedBinaryData binary(fmapi::NewBinaryData());
    if (FMX_ErrCode e = container::AddTypedStream(binary.get(), type, uint32_t(exported.size() - skip),
                                                  exported.data() + skip))
        return fmapi::Outcome::Failure(e, "Conversion failed");
    exported = {};
    if (type == container::FourCC("jp2 ")) {
        if (auto failure = AddVdPreview(binary.get())) return std::move(*failure);
    } else {
        const uint16_t w = SizeField(width), h = SizeField(height);
        if (FMX_ErrCode e = container::AddSizeStream(binary.get(), w, h)) return fmapi::Outcome::Failure(e);
        if (type != container::kJpegStream && type != container::kPictStream) {
            // Readers that look only for a "JPEG" stream find the size where they expect a picture.
            const uint8_t size[4] = {uint8_t(w >> 8), uint8_t(w), uint8_t(h >> 8), uint8_t(h)};
            if (FMX_ErrCode e = container::AddTypedStream(binary.get(), container::kJpegStream, 4, size))
                return fmapi::Outcome::Failure(e);
        }
    }
    fmapi::OwnedData result(fmapi::NewData());
    if (FMX_ErrCode e = SetResultBinary(result.get(), binary.get())) return fmapi::Outcome::Failure(e);
    return fmapi::Outcome::Data(std::move(result));
}

std::string ImageOutputTypeList() {
    std::string list;
    for (const platform::ImageFormat& f : platform::ImageFormats()) {
        if (!platform::CanWriteImageFormat(f)) continue;
        list += container::FourCCText(f.code);
        list += '|';
        list += std::string(f.extension).substr(0, 3);
        list += '|';
        list += std::string(f.description).substr(0, 99);
        list += '\r';
    }
    return list;
}

}  // namespace vd::image
