// The clip of an export as a one-band libvips image that covers what is clipped away: 0 inside an
// odd number of the rectangles, 255 elsewhere. Its rows are made as libvips asks for them, so that
// a clipped picture of any size never needs a mask as large as itself in memory.
#pragma once

#include "platform/graphics/graphics_importer.h"
#include "platform/graphics/vips_owners.h"
#include "util/status_codes.h"

#include <vector>

namespace vd::platform {

// rects must outlive the image.
util::Status ClipCoverImage(const std::vector<ClipRect>& rects, int32_t width, int32_t height, VipsImagePtr& mask);

}  // namespace vd::platform
