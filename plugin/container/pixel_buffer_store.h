// Pictures drawn by the plug-in, stored as container results: a "JPEG" stream and a "SIZE" stream.
#pragma once

#include "platform/graphics/pixel_buffer.h"

#include <fmx/fmx.h>

#include <cstdint>

namespace vd::container {

// Sets the result to the buffer as a JPEG at the best quality, then its "SIZE". The picture is one
// pixel narrower and one pixel lower than the buffer: the drawing functions have always handed
// the encoder the buffer's last pixel coordinates as its size, and the pictures databases already
// hold have these sizes, so the last column and row stay out. 0; -50 for a buffer of one pixel in
// width or height (nothing would be left to store); -2005 when start-up found no JPEG saver; the graphics layer's or the host's code. The
// result is untouched on failure.
int32_t StorePixelBufferAsJpeg(FMX_Data* result, const platform::PixelBuffer& buffer);

}  // namespace vd::container
