// Image type codes as functions take them, and the file-name extension of each known code.
#pragma once

#include "fmapi/outcome.h"

#include <fmx/fmx.h>

#include <cstdint>
#include <optional>
#include <string>

namespace vd::image {

// Parameter index as an image type code: four characters; a line of Vandrel_ListImageOutputTypes
// (its first four); or empty, giving 0 (the source's own type). The failure otherwise: 20102 for a
// parameter that is not text, 20101 for any other text.
std::optional<fmapi::Outcome> ImageTypeParameter(const FMX_DataVect* args, uint32_t index, uint32_t& code);

// The extension a container of that type is written to disk with ("jpg" for "JPEG"), or "" for a
// code the type table does not hold.
std::string ExtensionOfType(uint32_t code);

}  // namespace vd::image
