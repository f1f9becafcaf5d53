// What a file function ends with: a result text on success, or a code with the function's own
// short message, which the error object prefixes with the function's name.
#pragma once

#include <fmx/fmx.h>

#include <string>
#include <string_view>

#include "files/file_path_resolver.h"
#include "fmapi/errors/vds_error.h"
#include "util/status_codes.h"

namespace vd::files {

struct FileOutcome {
    util::Status status = util::kNoError;
    std::string message;  // empty: success; the result is text
    std::string detail;   // added after the message
    std::string text;
};

// The result text of a success. A path chosen in a ".V" dialog comes first, on its own line.
FileOutcome Succeeded(std::string text, const ResolvedItem* item = nullptr);
FileOutcome Failed(util::Status status, std::string_view message);
// A path that did not resolve: the resolver's own message where it has one, else the function's.
FileOutcome FailedToResolve(const ResolvedItem& item, std::string_view message);

// 20100 with the count message of the exact-count rule.
FileOutcome WrongArgumentCount(int expected);

// Sets the error object and the result from the outcome.
FMX_ErrCode Answer(VDSError& error, FMX_Data* result, const FileOutcome& outcome);

}  // namespace vd::files
