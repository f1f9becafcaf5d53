#include "image/image_info.h"

#include "container/stream_types.h"
#include "image/container_importer.h"
#include "image/transform/fixed_point.h"
#include "platform/graphics/graphics_importer.h"

#include <algorithm>
#include <limits>

namespace vd::image {

namespace {

constexpr size_t kLongestName = 31;  // a description's name is a Str31

std::string Line(const char* label, int64_t value) { return std::string(label) + std::to_string(value) + "\r"; }

}  // namespace

std::string ImageInfoReport(const ImageInfo& info) {
    return Line("Height (px): ", info.height) + Line("Width (px): ", info.width) +
           Line("Depth (bits): ", info.depth) + Line("Quality: ", info.quality) +
           Line("V Resolution (dpi): ", info.vDpi) + Line("H Resolution (dpi): ", info.hDpi) +
           Line("Image Count: ", info.imageCount) + Line("Size (bytes): ", info.dataSize) +
           "Compressor Type: " + container::FourCCText(info.compressorType) + "\r" +
           "Compressor Description: " + info.compressorName.substr(0, kLongestName) + "\r";
}

fmapi::Outcome DescribeImage(const FMX_Data* parameter) {
    // Opening reads and checks the picture's header, which is all a validation could add.
    platform::GraphicsImporter importer;
    if (auto failure = OpenImporterForContainer(parameter, importer)) return std::move(*failure);
    const platform::ImageDescription& d = importer.Description();
    ImageInfo info;
    // The report's fields are as wide as the description's; larger values wrap as they always have.
    info.height = int16_t(d.height);
    info.width = int16_t(d.width);
    info.depth = d.depth;
    info.vDpi = Fix2Long(X2Fix(d.vDpi));
    info.hDpi = Fix2Long(X2Fix(d.hDpi));
    info.imageCount = d.imageCount;
    info.dataSize = int32_t(std::min<int64_t>(importer.DataSize(), std::numeric_limits<int32_t>::max()));
    info.compressorType = d.type;
    info.compressorName = d.name;
    return fmapi::Outcome::Text(ImageInfoReport(info));
}

}  // namespace vd::image
