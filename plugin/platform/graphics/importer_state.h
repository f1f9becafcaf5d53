// What an opened graphics importer holds, shared by its opening (graphics_importer.cpp) and its
// export (image_export.cpp) inside the graphics layer.
#pragma once

#include "platform/graphics/draw_matrix.h"
#include "platform/graphics/graphics_importer.h"
#include "platform/graphics/image_formats.h"
#include "platform/graphics/pict_codec.h"
#include "platform/graphics/raster.h"
#include "platform/graphics/vips_owners.h"
#include "util/status_codes.h"

#include <string>
#include <vector>

namespace vd::platform {

struct GraphicsImporter::State {
    const ImageFormat* format = nullptr;
    ImageDescription description;
    std::string path;             // a file libvips reads itself, streaming
    std::string sourceFile;       // the file it was opened on, whoever reads it
    std::string webAddress;       // the address it was fetched from
    std::vector<uint8_t> bytes;   // the picture in memory (the whole file for ImageMagick and our codecs)
    size_t dataOffset = 0;        // the part libvips decodes (inside a QuickTime image: its picture)
    size_t dataSize = 0;
    std::string loader;           // the libvips loader
    Raster first;                 // ImageMagick's and our own codecs' first picture, decoded at opening
    bool ownPict = false;         // a picture of our own layout, decoded only when drawn (pict)
    PictLayout pict;
    bool sourceRectSet = false;   // what an export draws (SetSourceRect, SetMatrix)
    ClipRect sourceRect;
    DrawMatrix matrix;

    bool Drawn() const { return sourceRectSet || !matrix.IsIdentity(); }
};

// Picture index (from 0) as a libvips image, streamed top to bottom once, or read in any order when
// randomAccess (libvips then decodes it once into memory, or into a temporary file of its own for
// a large picture). Pictures decoded into a raster are wrapped without a copy: holder keeps their
// pixels and must outlive the image.
util::Status PictureOf(const GraphicsImporter::State& state, int32_t index, VipsImagePtr& image, Raster& holder,
                       bool randomAccess = false);

}  // namespace vd::platform
