#include "image/container_importer.h"

#include "container/container_subsystem.h"
#include "container/database_location.h"
#include "container/stored_reference.h"
#include "container/streams.h"
#include "fmapi/args/arguments.h"
#include "fmapi/args/host_binary.h"
#include "fmapi/args/host_data.h"
#include "util/blank_trim.h"
#include "util/file_location.h"
#include "util/status_codes.h"

#include <climits>
#include <string>
#include <string_view>

#include <sys/stat.h>

namespace vd::image {

namespace {

constexpr const char* kReferenceMissing = "Could not find referenced image file";

bool IsWebAddress(std::string_view text) { return text.rfind("http://", 0) == 0 || text.rfind("https://", 0) == 0; }

// The file a reference text names, or the resolution's code.
int32_t ResolveReference(std::string_view text, std::string& path) {
    if (text.size() >= PATH_MAX) return util::kBadName;
    util::FileLocation location;
    if (int32_t e = container::ResolveAgainstDatabase(text.substr(0, container::kReferenceTextLimit), location)) return e;
    if (!location.leafName.empty()) return util::kFileNotFound;
    path = util::FullPath(location);
    struct stat info {};
    if (::stat(path.c_str(), &info) != 0) return util::kFileNotFound;
    return S_ISDIR(info.st_mode) ? util::kNotAFile : util::kNoError;
}

// A parameter as a reference: its text, or the lines of a container stored by reference tried in
// order. util::kContainerData for a container that holds streams (the picture is embedded).
int32_t ResolveParameter(const FMX_Data* parameter, std::string& path, std::string& text) {
    const int32_t type = ArgType(parameter);
    if (type == FMX_TYPE_BINARY && fmapi::BinaryGetCount(fmapi::DataGetBinaryData(parameter)) > 0)
        return util::kContainerData;
    text = ArgCText(fmapi::DataGetAsText(parameter));
    if (type != FMX_TYPE_BINARY) return ResolveReference(text, path);
    int32_t status = util::kFileNotFound;
    for (std::string_view line : container::StoredReferenceLines(text))
        if ((status = ResolveReference(line, path)) == 0) return 0;
    return status;
}

}  // namespace

std::optional<fmapi::Outcome> OpenImporterForContainer(const FMX_Data* parameter, platform::GraphicsImporter& importer) {
    if (!container::JpegExportAvailable())
        return fmapi::Outcome::Failure(kComponentsMissing, "QuickTime required components are not installed");

    std::string path, text;
    const int32_t resolved = ResolveParameter(parameter, path, text);
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
