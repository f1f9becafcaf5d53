#include "image/referenced_file.h"

#include "container/database_location.h"
#include "container/stored_reference.h"
#include "fmapi/args/arguments.h"
#include "fmapi/args/host_binary.h"
#include "fmapi/args/host_data.h"
#include "util/file_location.h"
#include "util/status_codes.h"

#include <climits>

#include <sys/stat.h>

namespace vd::image {

namespace {

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

}  // namespace

bool IsWebAddress(std::string_view text) { return text.starts_with("http://") || text.starts_with("https://"); }

int32_t ResolveReferencedFile(const FMX_Data* parameter, std::string& path, std::string& text) {
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

}  // namespace vd::image
