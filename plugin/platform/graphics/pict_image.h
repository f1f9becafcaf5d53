// A picture of our own layout seen by libvips as an image whose rows are unpacked when libvips
// asks for them, in any order and on any of its threads, so that it is never decoded whole.
#pragma once

#include "platform/graphics/pict_codec.h"
#include "platform/graphics/vips_owners.h"
#include "util/status_codes.h"

namespace vd::platform {

// Read top to bottom once, or in any order when randomAccess. file and layout must outlive the image.
util::Status PictImage(const uint8_t* file, const PictLayout& layout, bool randomAccess, VipsImagePtr& image);

}  // namespace vd::platform
