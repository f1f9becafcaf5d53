// The formats we read and write through ImageMagick, always naming the format: PICT and TGA have
// no signature, and a guess reads a PICT as a TGA.
#pragma once

#include "platform/graphics/raster.h"
#include "util/status_codes.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace vd::platform {

// Picture image `index` (from 0) of bytes in the coder's format ("PICT", "PSD", "SGI", "TGA",
// "BMP"), and how many pictures the file holds. util::kNoComponent when ImageMagick cannot be
// loaded; util::kCorruptData for bytes the coder does not take or an index past the last picture;
// util::kMemoryFull for a picture past the size limits, refused before its pixels are decoded.
util::Status MagickDecode(const void* bytes, size_t size, const char* coder, int32_t index, Raster& raster,
                          int32_t& imageCount);

// The raster as a file of the coder's format; runLength asks for the format's run-length
// compression where it has one.
util::Status MagickEncode(const Raster& raster, const char* coder, bool runLength, std::vector<uint8_t>& file);

}  // namespace vd::platform
