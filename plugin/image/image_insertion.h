// Vandrel_InsertImage: a picture file (or web image) made into a container, its bytes embedded
// with what the host needs to show it, or held by reference with its size.
#pragma once

#include "fmapi/outcome.h"

#include <fmx/fmx.h>

namespace vd::image {

// Embedded: the picture's own bytes as a stream of its type ("GIFf" for GIF, "PICT" without the
// 512-byte file header), then for "JPEG" and "PICT" a "SIZE" stream, for any other type the VD
// preview. By reference: the reference text with the word "image" and the picture's size; only a
// file can be held so.
fmapi::Outcome InsertImage(const FMX_Data* source, bool byReference);

}  // namespace vd::image
