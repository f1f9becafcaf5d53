// Vandrel_ExportField: a container's content written to a file. An embedded picture or file is
// written as the file it came from, text as a text file, and a container stored by reference has
// its file copied. The target is written whole under another name and then put in place, so an
// existing file is replaced only by a complete new one and is left as it was on every failure.
#pragma once

#include "fmapi/outcome.h"

#include <fmx/fmx.h>

#include <cstdint>
#include <string>

namespace vd::image {

// The file name with "." and the extension of the type appended, when the name has no extension
// of its own and the type table knows one.
std::string WithExtensionOfType(const std::string& path, uint32_t type);

// Writes the container (argument 0) to the file named by argument pathIndex. The result is empty
// text on success.
fmapi::Outcome ExportField(const FMX_DataVect* args, uint32_t pathIndex, bool replace);

}  // namespace vd::image
