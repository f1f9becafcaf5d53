// Converting the picture of a container into another format, with the kept conversion settings.
#pragma once

#include "fmapi/outcome.h"
#include "image/conversion_settings.h"

#include <fmx/fmx.h>

#include <cstdint>

namespace vd::image {

// The container of the converted picture: its stream of the type (0: the source's own type; a
// PICT without its file header), then for "jp2 " the VD preview, for any other type a "SIZE"
// stream and, unless the type is "JPEG" or "PICT", a 4-byte "JPEG" stream holding the same size.
fmapi::Outcome ConvertImage(const FMX_Data* parameter, uint32_t type, const ConversionSettings& settings);

// "code|extension|description\r" for every format this machine can write.
std::string ImageOutputTypeList();

}  // namespace vd::image
