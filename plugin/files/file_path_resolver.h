// The one front end of every file function's path: a "mac:/" reference line, a special-folder code
// (".D", ".t/sub/a.aif", ".U:Choose the folder"), or a path, absolute or relative to the default
// folder.
#pragma once

#include <string>

#include "files/path_argument.h"
#include "util/file_location.h"
#include "util/status_codes.h"

namespace vd::files {

inline constexpr const char* kUnknownCodeMessage = "Unrecognized code - must be A, F, P, T, D, O, R, S, V, or U";

struct ResolvedItem {
    // 0: the item exists (a broken symbolic link counts: it is an alias file). -43 with a location:
    // the item does not exist but its folder does. Anything else: no location.
    util::Status status = util::kNoError;
    util::FileLocation location;
    std::string chosenPath;  // ".V": the file chosen in the dialog, for the function's result
    std::string message;     // a message of the resolver's own that replaces the function's
    std::string detail;      // why a dialog failed, when the user did not cancel it

    bool Exists() const { return status == util::kNoError; }
    // Exists, or is missing in a folder that exists (a new item's place).
    bool Located() const { return status == util::kNoError || (status == util::kFileNotFound && !location.existingPath.empty()); }
    std::string Path() const { return util::FullPath(location); }
};

ResolvedItem ResolveFilePath(const PathArgument& argument, const std::string& defaultFolder);

}  // namespace vd::files
