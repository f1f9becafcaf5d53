// Vandrel_InsertFile: any file (or web address) made into a container, as its bytes with its
// name, as text, or held by reference.
#pragma once

#include "fmapi/outcome.h"

#include <fmx/fmx.h>

namespace vd::image {

// By reference: the reference text with the word "file" and size 0, 0 (only a file can be held
// so). As text: the bytes read as UTF-8, or byte by byte as ISO-8859-1 when they are not UTF-8.
// Otherwise a "FILE" stream with the bytes and, for hosts that keep file names, "FNAM" data
// naming the file ("filemac:" and its path) or the web address.
fmapi::Outcome InsertFile(const FMX_Data* source, bool byReference, bool asText);

}  // namespace vd::image
