#include "platform/graphics/graphics_warm_up.h"

#include "platform/graphics/jpeg_codec.h"
#include "platform/graphics/vips_library.h"

#include <system_error>
#include <vector>

namespace vd::platform {

GraphicsWarmUp::GraphicsWarmUp() {
    if (VipsStarted()) return;
    try {
        helper_ = std::thread([] {
            if (StartVips() != util::kNoError) return;
            // The first picture a process encodes also pays for setting up the saver; a picture of
            // one pixel takes that on here.
            if (auto dot = PixelBuffer::Make(1, 1)) {
                std::vector<uint8_t> ignored;
                EncodeJpeg(*dot, 1, 1, kJpegBestQuality, ignored);
            }
        });
    } catch (const std::system_error&) {
    }
}

GraphicsWarmUp::~GraphicsWarmUp() {
    if (helper_.joinable()) helper_.join();
}

}  // namespace vd::platform
