// The libvips operations of each picture effect, on pictures of 8-bit sRGB with three bands. The
// result stays a pipeline: pixels are computed as its reader asks for them.
#pragma once

#include "platform/graphics/effect_recipe.h"
#include "platform/graphics/vips_owners.h"
#include "util/status_codes.h"

namespace vd::platform {

// Replaces image by the effect drawn on it (8-bit sRGB, three bands, the same size). A cross fade
// takes second, brought to image's size first; the other effects ignore it.
util::Status DrawEffect(VipsImagePtr& image, VipsImage* second, const EffectRecipe& recipe);

// image scaled to exactly width x height (libvips's resize, its edges continued where rounding
// leaves a row or column short).
util::Status ResizeExactly(VipsImagePtr& image, int width, int height);

}  // namespace vd::platform
