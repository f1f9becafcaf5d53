#include "platform/graphics/pict_image.h"

#include "platform/graphics/vips_call.h"
#include "platform/graphics/vips_library.h"

#include <vips/vips.h>

#include <new>

namespace vd::platform {

namespace {

constexpr int kBands = 3;
constexpr int kCachedRows = 16;

size_t PlaneBytes(const PictLayout& layout) { return size_t(layout.width) * kBands; }

// Each of libvips's threads unpacks into a row of its own.
void* StartRow(VipsImage*, void*, void* b) {
    return new (std::nothrow) uint8_t[PlaneBytes(*static_cast<const PictLayout*>(b))];
}

int StopRow(void* row, void*, void*) {
    delete[] static_cast<uint8_t*>(row);
    return 0;
}

int GenerateRows(VipsRegion* out, void* row, void* a, void* b, gboolean*) {
    if (!row) return -1;
    auto* planes = static_cast<uint8_t*>(row);
    const auto* file = static_cast<const uint8_t*>(a);
    const auto& layout = *static_cast<const PictLayout*>(b);
    const VipsRect& area = out->valid;
    const size_t width = size_t(layout.width), stride = size_t(VIPS_REGION_LSKIP(out));
    const uint8_t *r = planes, *g = r + width, *bl = g + width;
    for (int y = area.top; y < area.top + area.height; ++y) {
        DecodePictRow(file, layout, y, planes);
        uint8_t* pixel = reinterpret_cast<uint8_t*>(out->data) + size_t(y - area.top) * stride;
        for (int x = area.left; x < area.left + area.width; ++x, pixel += kBands)
            pixel[0] = r[x], pixel[1] = g[x], pixel[2] = bl[x];
    }
    return 0;
}

}  // namespace

util::Status PictImage(const uint8_t* file, const PictLayout& layout, bool randomAccess, VipsImagePtr& image) {
    VipsImagePtr made(vips_image_new());
    if (!made) return StatusFromVipsError(GraphicsStep::kDecoding);
    vips_image_init_fields(made.get(), layout.width, layout.height, kBands, VIPS_FORMAT_UCHAR, VIPS_CODING_NONE,
                           VIPS_INTERPRETATION_sRGB, layout.hDpi / 25.4, layout.vDpi / 25.4);
    VipsImage* none[] = {nullptr};
    if (vips_image_pipeline_array(made.get(), VIPS_DEMAND_STYLE_THINSTRIP, none) != 0 ||
        vips_image_generate(made.get(), StartRow, GenerateRows, StopRow, const_cast<uint8_t*>(file),
                            const_cast<PictLayout*>(&layout)) != 0)
        return StatusFromVipsError(GraphicsStep::kDecoding);
    // A row unpacks from its start only, while the operations downstream may ask for narrow tiles:
    // whole rows are kept, the few that a top-to-bottom pass needs, or every one for any order.
    const int bands = (layout.height + kCachedRows - 1) / kCachedRows;
    VipsCall cache(randomAccess ? "tilecache" : "linecache");
    cache.Set("in", made.get()).Set("tile_height", kCachedRows).SetBool("threaded", true);
    if (randomAccess)
        cache.Set("tile_width", layout.width).Set("max_tiles", bands + 1);
    cache.SetEnum("access", VIPS_TYPE_ACCESS, randomAccess ? VIPS_ACCESS_RANDOM : VIPS_ACCESS_SEQUENTIAL);
    return cache.Run(GraphicsStep::kDecoding, image);
}

}  // namespace vd::platform
