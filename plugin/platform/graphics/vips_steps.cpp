#include "platform/graphics/vips_steps.h"

namespace vd::platform {

util::Status Apply(VipsCall& call, VipsImagePtr& image) {
    VipsImagePtr out;
    if (util::Status s = call.Run(GraphicsStep::kEncoding, out)) return s;
    image = std::move(out);
    return util::kNoError;
}

util::Status Colourspace(VipsImagePtr& image, VipsInterpretation space) {
    VipsCall call("colourspace");
    call.Set("in", image.get()).SetEnum("space", VIPS_TYPE_INTERPRETATION, space);
    return Apply(call, image);
}

util::Status CastToBytes(VipsImagePtr& image) {
    if (image->BandFmt == VIPS_FORMAT_UCHAR) return util::kNoError;
    VipsCall call("cast");
    call.Set("in", image.get()).SetEnum("format", VIPS_TYPE_BAND_FORMAT, VIPS_FORMAT_UCHAR);
    return Apply(call, image);
}

}  // namespace vd::platform
