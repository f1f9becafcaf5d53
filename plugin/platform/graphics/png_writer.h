// PNG files of plain 8-bit pictures, written as libvips's saver writes them with its defaults (no
// row filter, zlib's default level, the resolution in a pHYs chunk) but deflated on two threads.
//
// Deflating is nearly all the time of such a file, and zlib does it on one thread. Here the rows
// are cut into bands of about a megabyte; each band is deflated on its own, primed with the 32 KiB
// of rows before it and ended on a byte boundary, so the bands join into one zlib stream that any
// reader takes, within a fraction of a percent of the one-thread size.
#pragma once

#include "util/status_codes.h"

#include <vips/vips.h>

#include <cstdint>
#include <vector>

namespace vd::platform {

// True when libvips's saver would write nothing for the picture beyond its pixels and resolution:
// 8-bit samples in one to four bands, and no colour profile, EXIF, XMP or comments to carry.
bool WritesAsPlainPng(VipsImage* image);

// Writes such a picture, reading its rows once, top to bottom, as libvips's threads make them.
util::Status WritePlainPng(VipsImage* image, std::vector<uint8_t>& out);

}  // namespace vd::platform
