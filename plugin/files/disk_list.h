// The text of Vandrel_ListDisks.
#pragma once

#include <string>
#include <vector>

namespace vd::files {

// The list has always been built in a buffer of 500 bytes, terminator included; scripts that
// split it rely on never getting a part of a name.
inline constexpr size_t kDiskListCapacity = 500;

// The names joined by "|", as many whole names as fit; the rest are left off.
std::string JoinDiskNames(const std::vector<std::string>& names, size_t capacity = kDiskListCapacity);

}  // namespace vd::files
