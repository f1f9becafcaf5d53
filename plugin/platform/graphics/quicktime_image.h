// QuickTime Image files ('qtif'): an image description atom ("idsc") and the compressed picture in
// a data atom ("idat"). We write PNG pictures inside ("png " compressor, lossless) and read the
// compressors libvips can decode (PNG, JPEG, TIFF, GIF).
#pragma once

#include "util/status_codes.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace vd::platform {

struct QuickTimeImage {
    uint32_t compressor = 0;  // "png ", "jpeg" ...
    int32_t width = 0, height = 0;
    int16_t depth = 24;
    double hDpi = 72, vDpi = 72;
    std::string name;         // the compressor's name, as the description gives it
    size_t dataOffset = 0;    // where the picture lies in the file
    size_t dataSize = 0;
};

// The description and where the picture lies. util::kCorruptData for atoms that run past the end
// or a file without both atoms.
util::Status ReadQuickTimeImage(const uint8_t* bytes, size_t size, QuickTimeImage& image);

// A file holding the picture's bytes with the description given.
util::Status WriteQuickTimeImage(const QuickTimeImage& image, const uint8_t* data, size_t dataSize,
                                 std::vector<uint8_t>& file);

}  // namespace vd::platform
