#include "platform/graphics/clip_cover.h"

#include "platform/graphics/vips_library.h"

#include <vips/vips.h>

#include <algorithm>
#include <cstring>
#include <new>

namespace vd::platform {

namespace {

// Each of libvips's threads sorts a row's edges in a list of its own.
void* StartEdges(VipsImage*, void* a, void*) {
    return new (std::nothrow) int32_t[2 * static_cast<const std::vector<ClipRect>*>(a)->size() + 1];
}

int StopEdges(void* edges, void*, void*) {
    delete[] static_cast<int32_t*>(edges);
    return 0;
}

// Every left and right side of a rectangle that crosses a row flips the row from outside to inside
// or back, so the sides sorted cut the row into spans that are alternately out (covered) and in.
int GenerateRows(VipsRegion* out, void* seq, void* a, void*, gboolean*) {
    if (!seq) return -1;
    auto* edges = static_cast<int32_t*>(seq);
    const auto& rects = *static_cast<const std::vector<ClipRect>*>(a);
    const VipsRect& area = out->valid;
    const int32_t left = area.left, right = area.left + area.width;
    const size_t stride = size_t(VIPS_REGION_LSKIP(out));
    for (int32_t y = area.top; y < area.top + area.height; ++y) {
        size_t count = 0;
        for (const ClipRect& r : rects) {
            if (y < r.top || y >= r.bottom || r.left >= r.right) continue;
            edges[count++] = std::clamp(r.left, left, right);
            edges[count++] = std::clamp(r.right, left, right);
        }
        std::sort(edges, edges + count);
        uint8_t* row = reinterpret_cast<uint8_t*>(out->data) + size_t(y - area.top) * stride;
        int32_t at = left;
        uint8_t value = 0xFF;
        for (size_t i = 0; i < count; ++i) {
            std::memset(row + (at - left), value, size_t(edges[i] - at));
            at = edges[i];
            value ^= 0xFF;
        }
        std::memset(row + (at - left), 0xFF, size_t(right - at));
    }
    return 0;
}

}  // namespace

util::Status ClipCoverImage(const std::vector<ClipRect>& rects, int32_t width, int32_t height, VipsImagePtr& mask) {
    VipsImagePtr made(vips_image_new());
    if (!made) return StatusFromVipsError(GraphicsStep::kEncoding);
    vips_image_init_fields(made.get(), width, height, 1, VIPS_FORMAT_UCHAR, VIPS_CODING_NONE, VIPS_INTERPRETATION_B_W,
                           1.0, 1.0);
    VipsImage* none[] = {nullptr};
    if (vips_image_pipeline_array(made.get(), VIPS_DEMAND_STYLE_ANY, none) != 0 ||
        vips_image_generate(made.get(), StartEdges, GenerateRows, StopEdges,
                            const_cast<std::vector<ClipRect>*>(&rects), nullptr) != 0)
        return StatusFromVipsError(GraphicsStep::kEncoding);
    mask = std::move(made);
    return util::kNoError;
}

}  // namespace vd::platform
