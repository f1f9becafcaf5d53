#include "platform/graphics/projective_map.h"

#include "platform/graphics/vips_library.h"

#include <vips/vips.h>

#include <new>

namespace vd::platform {

namespace {

int GenerateRows(VipsRegion* out, void*, void* a, void*, gboolean*) {
    const MapMatrix& k = *static_cast<const MapMatrix*>(a);
    const VipsRect& area = out->valid;
    const size_t stride = size_t(VIPS_REGION_LSKIP(out));
    for (int y = area.top; y < area.top + area.height; ++y) {
        auto* to = reinterpret_cast<float*>(reinterpret_cast<uint8_t*>(out->data) + size_t(y - area.top) * stride);
        const double u0 = k[1][0] * y + k[2][0], v0 = k[1][1] * y + k[2][1], w0 = k[1][2] * y + k[2][2];
        for (int x = area.left; x < area.left + area.width; ++x, to += 2) {
            const double w = k[0][2] * x + w0;
            // A point at infinity has nowhere to come from; 0 is what a division by zero gives in libvips.
            to[0] = w == 0 ? 0.0f : float((k[0][0] * x + u0) / w);
            to[1] = w == 0 ? 0.0f : float((k[0][1] * x + v0) / w);
        }
    }
    return 0;
}

}  // namespace

util::Status ProjectiveMapImage(const MapMatrix& k, int width, int height, VipsImagePtr& map) {
    auto* matrix = new (std::nothrow) MapMatrix(k);
    if (!matrix) return util::kMemoryFull;
    VipsImagePtr made(vips_image_new());
    if (!made) {
        delete matrix;
        return StatusFromVipsError(GraphicsStep::kEncoding);
    }
    // The matrix lives as long as the image that reads it.
    g_signal_connect_data(made.get(), "close",
                          G_CALLBACK(+[](VipsImage*, void* m) { delete static_cast<MapMatrix*>(m); }), matrix,
                          nullptr, GConnectFlags(0));
    vips_image_init_fields(made.get(), width, height, 2, VIPS_FORMAT_FLOAT, VIPS_CODING_NONE,
                           VIPS_INTERPRETATION_MULTIBAND, 1.0, 1.0);
    VipsImage* none[] = {nullptr};
    if (vips_image_pipeline_array(made.get(), VIPS_DEMAND_STYLE_ANY, none) != 0 ||
        vips_image_generate(made.get(), nullptr, GenerateRows, nullptr, matrix, nullptr) != 0)
        return StatusFromVipsError(GraphicsStep::kEncoding);
    map = std::move(made);
    return util::kNoError;
}

}  // namespace vd::platform
