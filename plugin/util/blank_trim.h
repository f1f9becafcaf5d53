// Texts typed into fields often carry a stray space or tab at either end.
#pragma once

#include <string_view>

namespace vd::util {

inline std::string_view TrimBlanks(std::string_view text) {
    while (!text.empty() && (text.front() == ' ' || text.front() == '\t')) text.remove_prefix(1);
    while (!text.empty() && (text.back() == ' ' || text.back() == '\t')) text.remove_suffix(1);
    return text;
}

}  // namespace vd::util
