#include "platform/graphics/image_file_probe.h"

#include "platform/graphics/vips_call.h"
#include "platform/graphics/vips_library.h"
#include "platform/graphics/vips_owners.h"

namespace vd::platform {

util::Status ImageFileSize(const std::string& path, int32_t& width, int32_t& height) {
    if (util::Status s = StartVips()) return s;
    const char* loader = vips_foreign_find_load(path.c_str());
    if (!loader) {
        StatusFromVipsError(GraphicsStep::kDecoding);  // clears the library's complaint
        return util::kNoCodec;
    }
    // The loader reads the header when it is built; the pixels would come only when asked for.
    VipsImagePtr image;
    VipsCall load(loader);
    load.Set("filename", path.c_str()).SetEnum("access", VIPS_TYPE_ACCESS, VIPS_ACCESS_SEQUENTIAL);
    if (util::Status s = load.Run(GraphicsStep::kDecoding, image)) return s;
    width = vips_image_get_width(image.get());
    height = vips_image_get_height(image.get());
    return util::kNoError;
}

}  // namespace vd::platform
