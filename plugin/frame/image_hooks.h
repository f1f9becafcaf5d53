// What the frame asks of the image subsystem at start-up. The subsystem is not built yet, so both
// do nothing; they are called where the image functions will need them, so that nothing in the
// lifecycle has to change when the subsystem arrives.
#pragma once

namespace vd {

// After the JPEG exporter was found: the conversion defaults that depend on JPEG export.
void ImageSubsystemStartUp() noexcept;

// After the image group was registered: the shared transform state back to the identity.
void ResetTransformState() noexcept;

}  // namespace vd
