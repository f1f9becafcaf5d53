#include "util/home_folder.h"

#include <cstdlib>

namespace vd::util {

std::optional<std::string> HomeFolder() {
    const char* home = std::getenv("HOME");
    if (!home || !*home) return std::nullopt;
    return std::string(home);
}

}  // namespace vd::util
