// The steps every libvips pipeline of this layer takes: an operation whose output replaces the
// image it read, a change of colour space, and a cast back to 8-bit samples.
#pragma once

#include "platform/graphics/vips_call.h"
#include "platform/graphics/vips_owners.h"
#include "util/status_codes.h"

#include <vips/vips.h>

namespace vd::platform {

// Replaces image by the operation's output, the operation's input having been image.
util::Status Apply(VipsCall& call, VipsImagePtr& image);
util::Status Colourspace(VipsImagePtr& image, VipsInterpretation space);
// Samples of any format to 8 bits (values past 0..255 clipped); nothing to do for 8-bit ones.
util::Status CastToBytes(VipsImagePtr& image);

}  // namespace vd::platform
