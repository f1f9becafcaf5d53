// The outcomes the file operations end with: a result text on success, or a code with the
// function's own short message.
#pragma once

#include "files/file_path_resolver.h"
#include "fmapi/outcome.h"
#include "util/status_codes.h"

#include <string>
#include <string_view>

namespace vd::files {

// The result text of a success. A path chosen in a ".V" dialog comes first, on its own line.
fmapi::Outcome Succeeded(std::string text, const ResolvedItem* item = nullptr);
// A detail, when there is one, follows the message after a blank.
fmapi::Outcome Failed(util::Status status, std::string_view message, std::string_view detail = {});
// A path that did not resolve: the resolver's own message where it has one, else the function's.
fmapi::Outcome FailedToResolve(const ResolvedItem& item, std::string_view message);

}  // namespace vd::files
