#include "image/vd_image.h"

#include "container/stream_types.h"
#include "fmapi/args/host_binary.h"
#include "fmapi/args/results.h"
#include "image/container_importer.h"
#include "image/conversion_settings.h"
#include "platform/graphics/image_formats.h"
#include "util/status_codes.h"

#include <algorithm>
#include <cstring>
#include <new>

namespace vd::image {

namespace {

constexpr size_t kPictHeaderSize = 512;
constexpr int32_t kLosslessQuality = 1024;

// QuickDraw's InsetRect: positive amounts move the sides inward.
platform::ClipRect Inset(platform::ClipRect r, int32_t dh, int32_t dv) {
    return {r.left + dh, r.top + dv, r.right - dh, r.bottom - dv};
}

uint16_t SizeField(int32_t value) { return uint16_t(std::clamp(value, 0, 0xFFFF)); }

}  // namespace

std::vector<platform::ClipRect> PreviewMarkRegion(int32_t w, int32_t h) {
    const int32_t s = std::min(w, h);
    int32_t t = 1, a = 2;
    if (s > 31) {
        a = s / 16;
        t = s < 128 ? 1 : s / 128;
    }
    std::vector<platform::ClipRect> frames;
    platform::ClipRect r{0, 0, w, h};
    frames.push_back(r);
    r = Inset(r, w / 16, h / 16);
    frames.push_back(r);
    frames.push_back(Inset(r, t, t));
    const platform::ClipRect inner = r;
    frames.push_back(Inset(inner, a, 0));
    frames.push_back(Inset(Inset(inner, a, 0), 0, t));
    r = Inset(inner, 0, inner.bottom / 16);
    frames.push_back(r);
    frames.push_back(Inset(r, t, 0));
    return frames;
}

namespace {

// The picture as a PICT file, its 512-byte header included.
util::Status ExportPict(const platform::GraphicsImporter& importer, container::Bytes& picture) {
    const platform::ImageFormat* pict = platform::FindImageExporter(container::kPictStream);
    if (!pict) return util::kNoComponent;
    platform::ImageExportSettings settings;
    settings.quality = kLosslessQuality;
    settings.depth = 24;
    settings.dontRecompress = false;
    if (util::Status s = importer.Export(*pict, settings, picture)) return s;
    return picture.size() < kPictHeaderSize ? util::kInternalComponentError : util::kNoError;
}

}  // namespace

std::optional<fmapi::Outcome> AddVdPreview(FMX_BinaryData* binary) {
    // The picture is read back from the very data it will stand beside, as any reader of it would.
    fmapi::OwnedData holder(fmapi::NewData());
    if (FMX_ErrCode e = SetResultBinary(holder.get(), binary)) return fmapi::Outcome::Failure(e);
    platform::GraphicsImporter importer;
    if (auto failure = OpenImporterForContainer(holder.get(), importer)) return failure;
    return AddVdPreview(binary, importer);
}

std::optional<fmapi::Outcome> AddVdImage(FMX_BinaryData* binary, const platform::GraphicsImporter& importer,
                                         const char* failedMessage) {
    container::Bytes picture;
    if (util::Status s = ExportPict(importer, picture)) return fmapi::Outcome::Failure(s, failedMessage);
    // The stream is "PICT" and the picture after its file header: the code goes in the header's
    // last four bytes for the copy, and out again before the picture is read back.
    const size_t code = kPictHeaderSize - 4;
    std::memcpy(picture.data() + code, "PICT", 4);
    if (FMX_ErrCode e = container::AddTypedStream(binary, container::kVdImageStream, uint32_t(picture.size() - code),
                                                  picture.data() + code))
        return fmapi::Outcome::Failure(e, failedMessage);
    std::memset(picture.data() + code, 0, 4);
    platform::GraphicsImporter stored;
    if (util::Status s = stored.OpenBytes(std::move(picture), container::kPictStream))
        return fmapi::Outcome::Failure(s, failedMessage);
    return AddVdPreview(binary, stored);
}

std::optional<fmapi::Outcome> AddVdPreview(FMX_BinaryData* binary, const platform::GraphicsImporter& importer) {
    const platform::ImageDescription& d = importer.Description();
    if (FMX_ErrCode e = container::AddSizeStream(binary, SizeField(d.width), SizeField(d.height)))
        return fmapi::Outcome::Failure(e);

    const PreviewSettings preview = StoredPreviewSettings();
    if (preview.quality == -1) return std::nullopt;
    const platform::ImageFormat* jpeg = platform::FindImageExporter(container::kJpegStream);
    if (!jpeg) return fmapi::Outcome::Failure(util::kNoComponent, "No codec for creating VD preview!");
    platform::ImageExportSettings settings;
    settings.quality = preview.quality;
    settings.depth = 24;
    if (preview.mark) settings.clip = PreviewMarkRegion(d.width, d.height);
    container::Bytes jpegBytes;
    if (util::Status s = importer.Export(*jpeg, settings, jpegBytes))
        return fmapi::Outcome::Failure(s, "Preview creation failed");
    if (FMX_ErrCode e = container::AddTypedStream(binary, container::kJpegStream, uint32_t(jpegBytes.size()),
                                                  jpegBytes.data()))
        return fmapi::Outcome::Failure(e, "Preview creation failed");
    return std::nullopt;
}

}  // namespace vd::image
