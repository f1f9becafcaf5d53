#include "image/image_insertion.h"

#include "container/reference_result.h"
#include "container/stream_types.h"
#include "container/streams.h"
#include "fmapi/args/results.h"
#include "image/container_importer.h"
#include "image/vd_image.h"
#include "platform/fs/whole_file.h"
#include "platform/graphics/web_fetch.h"
#include "util/status_codes.h"

#include <algorithm>

namespace vd::image {

namespace {

constexpr size_t kPictHeaderSize = 512;
// As large a file as the importer itself reads whole.
constexpr uint64_t kLargestInsertedFile = uint64_t(1) << 30;

// The stream type of a described picture: the host knows PICT and GIF pictures by these codes.
uint32_t StreamTypeOf(uint32_t described) {
    if (described == container::FourCC("QDRW")) return container::kPictStream;
    if (described == container::FourCC("GIF ")) return container::kGifStream;
    return described;
}

uint16_t SizeField(int32_t value) { return uint16_t(std::clamp(value, 0, 0xFFFF)); }

// Every byte behind the importer: its file, its web address asked again, or the embedded picture
// it was given (a PICT with its file header, as the importer had it).
util::Status SourceBytes(const FMX_Data* source, const platform::GraphicsImporter& importer, container::Bytes& bytes) {
    if (!importer.FilePath().empty()) return platform::fs::ReadWholeFile(importer.FilePath(), bytes, kLargestInsertedFile);
    if (!importer.WebAddress().empty()) {
        std::string detail;
        return platform::FetchUrl(importer.WebAddress(), platform::WebLimitsFromEnvironment(), bytes, detail);
    }
    uint32_t type = 0;
    if (auto failure = container::ReadImageData(source, bytes, type)) return util::Status(failure->Status());
    return util::kNoError;
}

fmapi::Outcome Embedded(const FMX_Data* source, const platform::GraphicsImporter& importer, uint32_t type) {
    container::Bytes bytes;
    const util::Status read = SourceBytes(source, importer, bytes);
    if (read != util::kNoError || bytes.empty())
        return fmapi::Outcome::Failure(read != util::kNoError ? read : util::kEndOfFile, "Error retrieving web image");
    const size_t skip = type == container::kPictStream ? std::min(kPictHeaderSize, bytes.size()) : 0;

    fmapi::OwnedBinaryData binary(fmapi::NewBinaryData());
    if (FMX_ErrCode e = container::AddTypedStream(binary.get(), type, uint32_t(bytes.size() - skip), bytes.data() + skip))
        return fmapi::Outcome::Failure(e);
    bytes = {};
    if (type == container::kJpegStream || type == container::kPictStream) {
        const platform::ImageDescription& d = importer.Description();
        if (FMX_ErrCode e = container::AddSizeStream(binary.get(), SizeField(d.width), SizeField(d.height)))
            return fmapi::Outcome::Failure(e);
    } else if (auto failure = AddVdPreview(binary.get(), importer)) {
        return std::move(*failure);
    }
    fmapi::OwnedData result(fmapi::NewData());
    if (FMX_ErrCode e = SetResultBinary(result.get(), binary.get())) return fmapi::Outcome::Failure(e);
    return fmapi::Outcome::Data(std::move(result));
}

fmapi::Outcome ByReference(const platform::GraphicsImporter& importer) {
    // A web image or an embedded picture has no file for the field to name.
    if (importer.FilePath().empty()) return fmapi::Outcome::Failure(util::kNoError, "Source must be a file to import by reference");
    const platform::ImageDescription& d = importer.Description();
    std::string text;
    if (int32_t e = container::ReferenceText(importer.FilePath(), "image", SizeField(d.width), SizeField(d.height), text))
        return fmapi::Outcome::Failure(e, "Could not get database file path.");
    return fmapi::Outcome::Text(std::move(text));
}

}  // namespace

fmapi::Outcome InsertImage(const FMX_Data* source, bool byReference) {
    platform::GraphicsImporter importer;
    if (auto failure = OpenImporterForContainer(source, importer)) return std::move(*failure);
    const uint32_t type = StreamTypeOf(importer.Description().type);
    if (type == 0) return fmapi::Outcome::Failure(util::kCorruptData, "Unrecognized image format");
    return byReference ? ByReference(importer) : Embedded(source, importer, type);
}

}  // namespace vd::image
