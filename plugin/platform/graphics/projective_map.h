// Where each pixel of a perspective drawing comes from, as the two-band float image libvips's
// mapim reads: pixel (x, y) holds (u / w, v / w) for (u, v, w) = (x, y, 1) times the matrix. The
// values are worked out as libvips asks for each strip, in one pass, never held whole.
#pragma once

#include "platform/graphics/vips_owners.h"
#include "util/matrix3.h"
#include "util/status_codes.h"

#include <array>

namespace vd::platform {

using MapMatrix = util::Matrix3;

util::Status ProjectiveMapImage(const MapMatrix& k, int width, int height, VipsImagePtr& map);

}  // namespace vd::platform
