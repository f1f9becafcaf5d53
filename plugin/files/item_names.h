// Paths and names as Vandrel_GetPath and Vandrel_GetName answer them.
#pragma once

#include <cstdint>
#include <string>

namespace vd::files {

// The folder levels up from an absolute path; "/" is as far as it goes. Fewer than 1 level climbs
// nothing.
std::string ClimbLevels(std::string path, int32_t levels);

}  // namespace vd::files
