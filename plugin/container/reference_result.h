// The text the host stores for a file held by reference: "size:w,h\r", the file as the database
// would name it (relative to its folder when it is a local file on the same volume, else the full
// path), "\r", and the file's full path. Each line carries the prefix word ("movie", "image",
// "file") in its "mac:" form. Readers try the lines in order (stored_reference.h).
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace vd::container {

// 0 with the text, or the database location's code. absolutePath must be absolute.
int32_t ReferenceText(const std::string& absolutePath, std::string_view word, uint16_t width, uint16_t height,
                      std::string& text);

}  // namespace vd::container
