#include "platform/graphics/clipped_image.h"

#include "platform/graphics/vips_library.h"

#include <vips/vips.h>

#include <algorithm>
#include <cstring>
#include <new>

namespace vd::platform {

namespace {

constexpr uint8_t kWhite = 0xFF;

struct Clip {
    const std::vector<ClipRect>* rects;
    size_t pixelBytes;
};

// What each of libvips's threads keeps: a region of the picture and room for a row's edges.
struct Rows {
    VipsRegion* source = nullptr;
    std::vector<int32_t> edges;
};

void* StartRows(VipsImage*, void* a, void* b) {
    auto* rows = new (std::nothrow) Rows;
    if (!rows) return nullptr;
    try {
        rows->edges.resize(2 * static_cast<const Clip*>(b)->rects->size());
    } catch (const std::bad_alloc&) {
        delete rows;
        return nullptr;
    }
    rows->source = vips_region_new(static_cast<VipsImage*>(a));
    if (!rows->source) {
        delete rows;
        return nullptr;
    }
    return rows;
}

int StopRows(void* seq, void*, void*) {
    auto* rows = static_cast<Rows*>(seq);
    g_object_unref(rows->source);
    delete rows;
    return 0;
}

uint8_t* RowAt(VipsRegion* region, int32_t x, int32_t y, size_t pixelBytes) {
    return reinterpret_cast<uint8_t*>(region->data) + size_t(y - region->valid.top) * size_t(VIPS_REGION_LSKIP(region)) +
           size_t(x - region->valid.left) * pixelBytes;
}

// Every left and right side of a rectangle that crosses a row flips the row from outside to inside
// or back, so the sides sorted cut the row into spans that are alternately out (white) and in.
int GenerateRows(VipsRegion* out, void* seq, void*, void* b, gboolean*) {
    if (!seq) return -1;
    auto& rows = *static_cast<Rows*>(seq);
    const Clip& clip = *static_cast<const Clip*>(b);
    const VipsRect& area = out->valid;
    if (vips_region_prepare(rows.source, &area) != 0) return -1;
    const int32_t left = area.left, right = area.left + area.width;
    const size_t pixel = clip.pixelBytes;
    for (int32_t y = area.top; y < area.top + area.height; ++y) {
        uint8_t* row = RowAt(out, left, y, pixel);
        std::memcpy(row, RowAt(rows.source, left, y, pixel), size_t(area.width) * pixel);
        size_t count = 0;
        for (const ClipRect& r : *clip.rects) {
            if (y < r.top || y >= r.bottom || r.left >= r.right) continue;
            rows.edges[count++] = std::clamp(r.left, left, right);
            rows.edges[count++] = std::clamp(r.right, left, right);
        }
        std::sort(rows.edges.begin(), rows.edges.begin() + ptrdiff_t(count));
        int32_t at = left;
        bool inside = false;
        for (size_t i = 0; i < count; ++i) {
            if (!inside) std::memset(row + size_t(at - left) * pixel, kWhite, size_t(rows.edges[i] - at) * pixel);
            at = rows.edges[i];
            inside = !inside;
        }
        std::memset(row + size_t(at - left) * pixel, kWhite, size_t(right - at) * pixel);
    }
    return 0;
}

}  // namespace

util::Status ClippedImage(VipsImage* in, const std::vector<ClipRect>& rects, VipsImagePtr& clipped) {
    if (in->BandFmt != VIPS_FORMAT_UCHAR) return util::kInternalComponentError;
    auto* clip = new (std::nothrow) Clip{&rects, size_t(in->Bands)};
    if (!clip) return util::kMemoryFull;
    VipsImagePtr made(vips_image_new());
    if (!made) {
        delete clip;
        return StatusFromVipsError(GraphicsStep::kEncoding);
    }
    // The clip's description lives as long as the image that reads it.
    g_signal_connect_data(made.get(), "close", G_CALLBACK(+[](VipsImage*, void* c) { delete static_cast<Clip*>(c); }),
                          clip, nullptr, GConnectFlags(0));
    VipsImage* inputs[] = {in, nullptr};
    if (vips_image_pipeline_array(made.get(), VIPS_DEMAND_STYLE_THINSTRIP, inputs) != 0 ||
        vips_image_generate(made.get(), StartRows, GenerateRows, StopRows, in, clip) != 0)
        return StatusFromVipsError(GraphicsStep::kEncoding);
    clipped = std::move(made);
    return util::kNoError;
}

}  // namespace vd::platform
