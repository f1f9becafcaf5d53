#include "image/container_importer.h"

#include "container/container_subsystem.h"
#include "container/streams.h"
#include "image/referenced_file.h"
#include "util/blank_trim.h"
#include "util/status_codes.h"

#include <string>
#include <string_view>

namespace vd::image {

namespace {

constexpr const char* kReferenceMissing = "Could not find referenced image file";

}  // namespace

std::optional<fmapi::Outcome> OpenImporterForContainer(const FMX_Data* parameter, platform::GraphicsImporter& importer) {
    if (!container::JpegExportAvailable())
        return fmapi::Outcome::Failure(kComponentsMissing, "QuickTime required components are not installed");

    std::string path, text;
    const int32_t resolved = ResolveReferencedFile(parameter, path, text);
    if (resolved == 0) {
        if (util::Status s = importer.OpenFile(path)) return fmapi::Outcome::Failure(s, kNoImporterMessage);
        return std::nullopt;
    }
    if (resolved == util::kContainerData) {
        container::Bytes bytes;
        uint32_t type = 0;
        if (auto failure = container::ReadImageData(parameter, bytes, type)) return failure;
        if (bytes.empty()) return fmapi::Outcome::Failure(util::kNotImageOrPath, container::kNotImageOrPathMessage);
        if (util::Status s = importer.OpenBytes(std::move(bytes), type))
            return fmapi::Outcome::Failure(s, kNoImporterMessage);
        return std::nullopt;
    }
    int32_t status = resolved;
    const std::string_view trimmed = util::TrimBlanks(text);
    if (IsWebAddress(trimmed)) {
        std::string detail;
        status = importer.OpenUrl(std::string(trimmed), platform::WebLimitsFromEnvironment(), detail);
        if (status == 0) return std::nullopt;
    }
    return fmapi::Outcome::Failure(status, kReferenceMissing);
}

}  // namespace vd::image
