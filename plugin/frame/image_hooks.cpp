#include "frame/image_hooks.h"

namespace vd {

// Intentionally empty until the image subsystem exists (see image_hooks.h).
void ImageSubsystemStartUp() noexcept {}

// Intentionally empty until the transform pipeline exists (see image_hooks.h).
void ResetTransformState() noexcept {}

}  // namespace vd
