// An export's clip applied by libvips as it streams the picture: what lies inside an odd number of
// the rectangles is copied, the rest is white. Each row is copied whole and the clipped spans are
// then filled, so that a clipped picture costs hardly more than the picture, and no mask as large
// as the picture is ever made.
#pragma once

#include "platform/graphics/graphics_importer.h"
#include "platform/graphics/vips_owners.h"
#include "util/status_codes.h"

#include <vector>

namespace vd::platform {

// in is 8-bit; in and rects must outlive clipped.
util::Status ClippedImage(VipsImage* in, const std::vector<ClipRect>& rects, VipsImagePtr& clipped);

}  // namespace vd::platform
