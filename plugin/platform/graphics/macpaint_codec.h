// MacPaint pictures ('PNTG'): 576 x 720 black-and-white pixels, a row of 72 bytes each, PackBits
// compressed after a 512-byte header. No library on this platform writes them, so we do both ways.
#pragma once

#include "platform/graphics/raster.h"
#include "util/status_codes.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace vd::platform {

inline constexpr int32_t kMacPaintWidth = 576;
inline constexpr int32_t kMacPaintHeight = 720;

// Whether the bytes start as a MacPaint file with a MacBinary header of 128 bytes before it.
bool HasMacBinaryPaintHeader(const uint8_t* bytes, size_t size);

// A grey raster (0 black, 255 white). util::kCorruptData for data that ends before the last row or
// a run that crosses the picture's end.
util::Status DecodeMacPaint(const uint8_t* bytes, size_t size, Raster& raster);

// Any raster as a MacPaint file: pixels darker than middle grey are black; the picture is cut or
// padded with white to the format's fixed size, from the top left.
util::Status EncodeMacPaint(const Raster& raster, std::vector<uint8_t>& file);

}  // namespace vd::platform
