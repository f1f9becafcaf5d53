#include "container/functions/insert_quicktime_function.h"

#include "container/database_location.h"
#include "container/movie_insertion.h"
#include "container/reference_result.h"
#include "container/stored_reference.h"
#include "fmapi/args/arguments.h"
#include "fmapi/args/host_data.h"
#include "platform/ui/dialog_service.h"
#include "util/status_codes.h"

#include <climits>
#include <optional>

#include <sys/stat.h>

namespace vd::container {

namespace {

constexpr const char* kDatabasePathMessage = "Could not get database file path.";
constexpr const char* kFindMessage = "Failed to find input file.";

// 0 when the text names an existing file, with its absolute path.
int32_t ExistingFile(std::string_view text, std::string& path) {
    if (text.size() >= PATH_MAX) return util::kBadName;
    util::FileLocation location;
    if (int32_t e = ResolveAgainstDatabase(text, location)) return e;
    if (!location.leafName.empty()) return util::kFileNotFound;
    const std::string full = util::FullPath(location);
    struct stat info {};
    if (::stat(full.c_str(), &info) != 0) return util::kFileNotFound;
    if (S_ISDIR(info.st_mode)) return util::kNotAFile;
    path = full;
    return 0;
}

// The file the argument names, or the failure with its message.
std::optional<fmapi::Outcome> FileOfArgument(const FMX_DataVect* args, std::string& path) {
    const FMX_Data* argument = ArgData(args, 0);
    const std::string text = ArgCText(fmapi::DataGetAsText(argument));
    const bool container = ArgType(argument) == FMX_TYPE_BINARY;
    if (!container && text.empty()) return fmapi::Outcome::Failure(util::kBadParameter, "Could not get parameter #1 as text.");

    std::string folder;
    if (const int where = DatabaseLocation(folder); where != kLocalDatabase && where != kRemoteDatabase)
        return fmapi::Outcome::Failure(where, kDatabasePathMessage);

    if (!container) {
        if (int32_t e = ExistingFile(std::string_view(text).substr(0, kReferenceTextLimit), path))
            return fmapi::Outcome::Failure(e, kFindMessage);
        return std::nullopt;
    }
    // A container stored by reference: the first of its lines that names a file.
    int32_t first = util::kFileNotFound;
    for (std::string_view line : StoredReferenceLines(text)) {
        const int32_t e = ExistingFile(line, path);
        if (e == 0) return std::nullopt;
        if (first == util::kFileNotFound) first = e;
    }
    return fmapi::Outcome::Failure(first, kFindMessage);
}

std::optional<fmapi::Outcome> ChosenFile(std::string& path) {
    const platform::ui::DialogAnswer answer =
        platform::ui::ShowDialog({platform::ui::DialogKind::ChooseFile, "Import", {}});
    if (answer.status != 0) return fmapi::Outcome::Failure(answer.status, "Choosing file failed.");
    path = answer.path;
    return std::nullopt;
}

const char* MessageFor(InsertionStep step) {
    switch (step) {
        case InsertionStep::kAlias: return "Failed to alias input file.";
        case InsertionStep::kUnderstanding: return "QuickTime does not seem to understand to this file.";
        case InsertionStep::kTemporaryCopy: return "Copying file to a temporary folder has failed.";
        case InsertionStep::kLinking: return "Linking media has failed.";
    }
    return "";
}

}  // namespace

fmapi::Outcome InsertQuickTimeFunction(const FunctionCall& call) {
    std::string file;
    if (std::optional<fmapi::Outcome> failure = ArgCount(call.args) > 0 ? FileOfArgument(call.args, file) : ChosenFile(file))
        return std::move(*failure);

    InsertedMedia media;
    InsertionStep step;
    if (int32_t e = PrepareInsertion(file, media, step)) return fmapi::Outcome::Failure(e, MessageFor(step));

    std::string text;
    if (int32_t e = ReferenceText(media.path, "movie", media.width, media.height, text))
        return fmapi::Outcome::Failure(e, kDatabasePathMessage);
    return fmapi::Outcome::Text(std::move(text));
}

}  // namespace vd::container
