#include "container/output_file.h"

#include "container/database_location.h"
#include "container/stored_reference.h"
#include "fmapi/args/arguments.h"
#include "fmapi/args/host_data.h"
#include "platform/fs/path_resolver.h"
#include "util/status_codes.h"

#include <climits>

namespace vd::container {

namespace {

int32_t Resolve(std::string_view text, const std::string& folder, bool remote, std::string& path) {
    if (text.size() >= PATH_MAX) return util::kBadName;
    util::FileLocation location;
    if (util::Status s = util::ResolvePath(location, text, !remote, remote ? std::string() : folder)) return s;
    path = util::FullPath(location);
    return 0;
}

}  // namespace

int32_t OutputFileFromParameter(const FMX_DataVect* args, uint32_t index, std::string& path, OutputFileStep& step) {
    step = OutputFileStep::kText;
    if (index >= ArgCount(args)) return util::kBadParameter;
    const FMX_Data* parameter = ArgData(args, index);
    const std::string text = ArgCText(fmapi::DataGetAsText(parameter));
    if (text.empty()) return util::kBadParameter;

    step = OutputFileStep::kDatabasePath;
    std::string folder;
    const int where = DatabaseLocation(folder);
    if (where != kLocalDatabase && where != kRemoteDatabase) return where;

    step = OutputFileStep::kFinding;
    const bool remote = where == kRemoteDatabase;
    if (ArgType(parameter) != FMX_TYPE_BINARY) return Resolve(text.substr(0, kReferenceTextLimit), folder, remote, path);
    // A container stored by reference: the first of its lines that leads somewhere.
    int32_t first = util::kFileNotFound;
    for (std::string_view line : StoredReferenceLines(text)) {
        const int32_t e = Resolve(line, folder, remote, path);
        if (e == 0) return 0;
        if (first == util::kFileNotFound) first = e;
    }
    return first;
}

}  // namespace vd::container
