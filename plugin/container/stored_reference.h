// The text of a container stored by reference: "size:w,h", then the file relative to the database's
// folder, then its absolute path, one a line. Readers try the lines in order until one names a file.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace vd::container {

// How much of a reference text is read as a path, and of a by-reference container's text.
inline constexpr size_t kReferenceTextLimit = 1024;
inline constexpr size_t kStoredReferenceLimit = 512;

// The non-empty lines (split at CR or LF) of the first kStoredReferenceLimit bytes of text, each cut
// to kReferenceTextLimit bytes; views into text.
std::vector<std::string_view> StoredReferenceLines(std::string_view text);

}  // namespace vd::container
