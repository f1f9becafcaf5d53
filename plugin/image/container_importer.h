// How every image function opens the picture of a container parameter: a reference to a file (a
// path text or a container stored by reference), an embedded image stream by its type code, or a
// web address.
#pragma once

#include "fmapi/outcome.h"
#include "platform/graphics/graphics_importer.h"

#include <fmx/fmx.h>

#include <optional>

namespace vd::image {

inline constexpr int32_t kComponentsMissing = 20403;
inline constexpr const char* kNoImporterMessage = "Could not find QT importer for this type.";

// The importer, or the failure with its message: 20403 when the picture libraries were found
// missing at start-up; "Could not find QT importer for this type." when the file or stream holds
// no picture we read; the classification's message for a container with neither image nor
// reference; "Could not find referenced image file" when a reference names no file and the text
// is no web address that answers a picture.
std::optional<fmapi::Outcome> OpenImporterForContainer(const FMX_Data* parameter, platform::GraphicsImporter& importer);

}  // namespace vd::image
