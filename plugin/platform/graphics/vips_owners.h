// Owners for what libvips hands out: images are GObjects (released with g_object_unref), encoded
// buffers are g_malloc'ed (released with g_free).
#pragma once

#include <vips/vips.h>

#include <memory>

namespace vd::platform {

struct VipsImageRelease {
    void operator()(VipsImage* image) const { g_object_unref(image); }
};
using VipsImagePtr = std::unique_ptr<VipsImage, VipsImageRelease>;

struct GlibRelease {
    void operator()(void* memory) const { g_free(memory); }
};
using GlibBuffer = std::unique_ptr<void, GlibRelease>;

}  // namespace vd::platform
