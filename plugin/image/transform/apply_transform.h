// Vandrel_TApply's work: the picture of a container drawn through the transform state and
// returned as a VD image with its preview.
#pragma once

#include "fmapi/outcome.h"
#include "image/transform/transform_state.h"

#include <fmx/fmx.h>

namespace vd::image {

// Opens the picture, sets its source rectangle to the crop, folds a waiting quad and the resize
// into the state's matrix (for good: a second apply repeats them through the matrix) and draws
// it. The state is untouched when the picture cannot be opened or no VD image can be written.
fmapi::Outcome ApplyTransform(const FMX_Data* parameter, TransformState& state);

}  // namespace vd::image
