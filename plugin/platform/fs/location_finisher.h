// The last step of every path form: ask the file system what exists of the target.
#pragma once

#include <string>
#include <vector>

#include "platform/fs/volumes.h"
#include "util/file_location.h"
#include "util/status_codes.h"

namespace vd::util {

// Fills the record for an absolute, normalised target. A target that does not exist yet is kept as
// its folder plus its name, so that functions can create it; its folder must exist (-43) and be a
// folder (-1407).
Status FinishLocation(const std::string& target, const std::vector<platform::fs::Volume>& volumes,
                      FileLocation& location);

}  // namespace vd::util
