// Texts that must travel on one line (report lines, list items) carry their line breaks, and the
// two characters that introduce the escapes, as decimal character references: "&#13;", "&#10;",
// "&#38;", "&#35;".
#pragma once

#include <string>
#include <string_view>

namespace vd::util {

std::string EscapeLineBreaks(std::string_view text);

// Reads any decimal reference "&#N;" as the byte N, and "&#N" without its ";" as well; a number of
// 256 or more becomes "?". An "&#" not followed by a digit stays as it is, so "&#x41;" is unchanged.
std::string UnescapeLineBreaks(std::string_view text);

}  // namespace vd::util
