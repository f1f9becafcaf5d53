// The reference text a container field keeps for a file held by reference:
//   "size:W,H" CR, the file relative to the database's folder (or, for a remote database or a file on
//   another volume, its absolute path), CR, the file's absolute path.
#pragma once

#include <fmx/fmx.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace vd::container {

// The reference text for the file at absolutePath, with the prefix word ("image", "movie", "file").
// 0 or an error code of the database location.
int ReferenceText(std::string_view absolutePath, std::string_view prefixWord, uint16_t width, uint16_t height,
                  std::string& text);

// Sets the reference text as the (text) result. 0 or an error code.
int ReferenceResult(FMX_Data* result, std::string_view absolutePath, std::string_view prefixWord, uint16_t width,
                    uint16_t height);

// The path of target relative to folder ("a.wav", "sub/a.wav", "../b/a.wav"); -35 when the two lie on
// different volumes.
int RelativePath(std::string_view folder, std::string_view target, std::string& relative);

}  // namespace vd::container
