// MagickCore (ImageMagick 6), loaded when the first PICT, PSD, SGI, TGA or BMP picture is read or
// written, never with the plug-in: like libvips (vips_functions.h), the rest of the layer calls its
// functions by their own names through forwarders.
#pragma once

#include <string_view>

namespace vd::platform {

// Loads the library once per process; "" when that worked, else why not (the same on every call).
// VANDREL_MAGICK_LAYER=unloadable makes the load fail (tests use it).
std::string_view LoadMagick();

}  // namespace vd::platform
