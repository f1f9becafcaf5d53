// Picture effects drawn by the graphics layer: on a whole picture into a new picture, and small
// for a dialog's preview. The pictures pass between steps as uncompressed TIFFs in memory, which
// every reader of the layer opens and libvips streams from, so memory stays a few times the
// picture's pixels whatever the effect.
#pragma once

#include "platform/graphics/effect_recipe.h"
#include "platform/graphics/graphics_importer.h"
#include "util/status_codes.h"

#include <cstdint>
#include <vector>

namespace vd::platform {

// The effect drawn on first's picture (transparent parts over white) into result, opened on the
// drawn picture, as large as first's. A cross fade needs second (util::kBadParameter without it),
// which is resized to first's size when they differ.
util::Status ApplyEffect(const GraphicsImporter& first, const GraphicsImporter* second, const EffectRecipe& recipe,
                         GraphicsImporter& result);

// Pixels to show: 8-bit RGB, rows top to bottom without padding.
struct PreviewPixels {
    int width = 0, height = 0;
    std::vector<uint8_t> rgb;
};

// Small copies of one or two pictures (at most kPreviewWidth x kPreviewHeight, the aspect kept; the
// second at the first's size) on which effects are drawn again and again while a person moves the
// controls. Radii are scaled with the picture, so a blur looks in the preview as it will on the
// whole picture.
class EffectPreview {
public:
    static constexpr int kPreviewWidth = 320, kPreviewHeight = 240;

    util::Status Open(const GraphicsImporter& first, const GraphicsImporter* second);
    util::Status Render(const EffectRecipe& recipe, PreviewPixels& pixels) const;

private:
    std::vector<uint8_t> first_, second_;  // uncompressed TIFFs
    double scale_ = 1;                     // the preview's size over the picture's
};

}  // namespace vd::platform
