// The plug-in's own container pictures: the VD image (a lossless 24-bit PICT behind its type code,
// in a "VDIM" stream) and the VD preview (a JPEG beside pictures whose format the host cannot show,
// clipped to the preview mark that tells it from the real picture).
#pragma once

#include "container/streams.h"
#include "fmapi/outcome.h"
#include "platform/graphics/graphics_importer.h"

#include <fmx/fmx.h>

#include <optional>
#include <vector>

namespace vd::image {

// The rectangles whose odd overlaps make the preview mark of a width x height picture: the frame
// of the picture, a frame inset by a sixteenth, and corner brackets inside it.
std::vector<platform::ClipRect> PreviewMarkRegion(int32_t width, int32_t height);

// To binary data that holds an image stream: a "SIZE" stream and, unless the preview quality is
// -1, a "JPEG" preview at that quality (clipped to the preview mark when it is on). The failure
// with its message otherwise.
std::optional<fmapi::Outcome> AddVdPreview(FMX_BinaryData* binary);
// The same for binary data whose image stream the importer has open.
std::optional<fmapi::Outcome> AddVdPreview(FMX_BinaryData* binary, const platform::GraphicsImporter& picture);

// The importer's picture (as it draws it) to binary data as a VD image: a "VDIM" stream ("PICT"
// and the picture without its 512-byte file header) and its size and preview, the preview made
// from the very picture stored. failedMessage goes with a
// failure to make the picture.
std::optional<fmapi::Outcome> AddVdImage(FMX_BinaryData* binary, const platform::GraphicsImporter& importer,
                                         const char* failedMessage);

}  // namespace vd::image
