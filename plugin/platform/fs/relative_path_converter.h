// Paths relative to a base folder: the database's folder for references the host wrote, the home
// folder for "~/" paths.
#pragma once

#include <string>
#include <string_view>

#include "util/status_codes.h"

namespace vd::util {

// The text split at any of the separators, taken piece by piece from the base folder. The base must
// be an existing folder given as an absolute path (else -120). ".." may climb out of the base, but
// not above the root (-120). A text that begins with a separator is -43: it is not relative at all.
Status ConvertRelativePath(std::string_view text, std::string_view separators, const std::string& baseFolder,
                           std::string& target);

}  // namespace vd::util
