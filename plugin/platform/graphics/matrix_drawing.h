// Drawing a picture through a matrix inside the graphics layer: the source rectangle mapped by
// the matrix, resampled bilinearly, white wherever the mapped picture does not reach. It stays a
// libvips pipeline, so the pixels stream through it as the writer asks for them.
#pragma once

#include "platform/graphics/draw_matrix.h"
#include "platform/graphics/vips_owners.h"
#include "util/status_codes.h"

namespace vd::platform {

// Replaces image (8-bit samples, no alpha) by its drawing. util::kBadParameter when the source
// rectangle misses the picture or the matrix flattens or overturns it (MappedBounds);
// util::kMemoryFull when the drawing would be too large to hold.
util::Status DrawThroughMatrix(VipsImagePtr& image, const ClipRect& source, const DrawMatrix& matrix);

}  // namespace vd::platform
