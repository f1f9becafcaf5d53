// The user's home folder, for "~/" paths.
#pragma once

#include <optional>
#include <string>

namespace vd::util {

// The value of HOME as it is now; nothing when it is unset or empty. The environment is read on
// every call so that a host that changes HOME (or a test) is followed.
std::optional<std::string> HomeFolder();

}  // namespace vd::util
