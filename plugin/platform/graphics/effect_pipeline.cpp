// Each effect is a short chain of libvips operations. Arithmetic ones (tint, brightness, sepia,
// cross fade) work in floating point and are cast back to 8 bits at the end, which clips.
#include "platform/graphics/effect_pipeline.h"

#include "platform/graphics/vips_call.h"
#include "platform/graphics/vips_steps.h"
#include "platform/graphics/vips_library.h"

#include <vips/vips.h>

#include <string_view>
#include <vector>

namespace vd::platform {

namespace {

util::Status Linear(VipsImage* in, const std::vector<double>& a, const std::vector<double>& b, VipsImagePtr& out) {
    VipsCall call("linear");
    call.Set("in", in).SetDoubles("a", a).SetDoubles("b", b);
    return call.Run(GraphicsStep::kEncoding, out);
}

util::Status Linear(VipsImagePtr& image, const std::vector<double>& a, const std::vector<double>& b) {
    VipsImagePtr out;
    if (util::Status s = Linear(image.get(), a, b, out)) return s;
    image = std::move(out);
    return util::kNoError;
}

util::Status Add(VipsImagePtr& left, VipsImage* right) {
    VipsCall call("add");
    call.Set("left", left.get()).Set("right", right);
    return Apply(call, left);
}

util::Status Matrix(VipsImagePtr& image, const char* operation, const char* matrixName, int width, int height,
                    const std::vector<double>& values) {
    VipsImagePtr matrix(vips_image_new_matrix_from_array(width, height, values.data(), int(values.size())));
    if (!matrix) return StatusFromVipsError(GraphicsStep::kEncoding);
    VipsCall call(operation);
    call.Set("in", image.get()).Set(matrixName, matrix.get());
    if (std::string_view(operation) == "conv") call.SetEnum("precision", VIPS_TYPE_PRECISION, VIPS_PRECISION_FLOAT);
    return Apply(call, image);
}

util::Status Tint(VipsImagePtr& image, uint32_t colour, double amount) {
    VipsImagePtr luminance;
    VipsCall grey("colourspace");
    grey.Set("in", image.get()).SetEnum("space", VIPS_TYPE_INTERPRETATION, VIPS_INTERPRETATION_B_W);
    if (util::Status s = grey.Run(GraphicsStep::kEncoding, luminance)) return s;
    // One band times three factors makes three bands: the luminance in the colour.
    const double r = (colour >> 16 & 0xFF) / 255.0, g = (colour >> 8 & 0xFF) / 255.0, b = (colour & 0xFF) / 255.0;
    if (util::Status s = Linear(luminance, {amount * r, amount * g, amount * b}, {0, 0, 0})) return s;
    if (util::Status s = Linear(image, {1 - amount}, {0})) return s;
    if (util::Status s = Add(image, luminance.get())) return s;
    return CastToBytes(image);
}

util::Status CrossFade(VipsImagePtr& image, VipsImage* second, double mix) {
    if (!second) return util::kBadParameter;
    // The weighting comes first, so the second picture is only read, never taken over.
    VipsImagePtr other;
    if (util::Status s = Linear(second, {mix}, {0}, other)) return s;
    if (util::Status s = ResizeExactly(other, image->Xsize, image->Ysize)) return s;
    if (util::Status s = Linear(image, {1 - mix}, {0})) return s;
    if (util::Status s = Add(image, other.get())) return s;
    return CastToBytes(image);
}

util::Status Draw(VipsImagePtr& image, VipsImage* second, const EffectRecipe& r) {
    switch (r.operation) {
        case EffectOperation::kBlur: {
            VipsCall call("gaussblur");
            call.Set("in", image.get()).Set("sigma", r.a);
            return Apply(call, image);
        }
        case EffectOperation::kSharpen: {
            VipsCall call("sharpen");
            call.Set("in", image.get()).Set("sigma", r.b).Set("m1", r.a).Set("m2", r.a);
            return Apply(call, image);
        }
        case EffectOperation::kEmboss:
            if (util::Status s = Matrix(image, "conv", "mask", 3, 3, {-1, -1, 0, -1, 0, 1, 0, 1, 1})) return s;
            if (util::Status s = Linear(image, {1}, {128})) return s;
            return CastToBytes(image);
        case EffectOperation::kEdges: {
            VipsCall call("sobel");
            call.Set("in", image.get());
            return Apply(call, image);
        }
        case EffectOperation::kGrey:
            if (util::Status s = Colourspace(image, VIPS_INTERPRETATION_B_W)) return s;
            return Colourspace(image, VIPS_INTERPRETATION_sRGB);
        case EffectOperation::kSepia:
            if (util::Status s = Matrix(image, "recomb", "m", 3, 3,
                                        {0.393, 0.769, 0.189, 0.349, 0.686, 0.168, 0.272, 0.534, 0.131}))
                return s;
            return CastToBytes(image);
        case EffectOperation::kInvert: {
            VipsCall call("invert");
            call.Set("in", image.get());
            return Apply(call, image);
        }
        case EffectOperation::kTint: return Tint(image, r.colour, r.a);
        case EffectOperation::kBrightness:
            if (util::Status s = Linear(image, {r.b}, {128 - 128 * r.b + 255 * r.a})) return s;
            return CastToBytes(image);
        case EffectOperation::kGamma: {
            VipsCall call("gamma");
            call.Set("in", image.get()).Set("exponent", r.a);
            return Apply(call, image);
        }
        case EffectOperation::kCrossFade: return CrossFade(image, second, r.a);
    }
    return util::kBadParameter;
}

}  // namespace

util::Status ResizeExactly(VipsImagePtr& image, int width, int height) {
    if (image->Xsize == width && image->Ysize == height) return util::kNoError;
    VipsCall resize("resize");
    resize.Set("in", image.get())
        .Set("scale", double(width) / image->Xsize)
        .Set("vscale", double(height) / image->Ysize);
    if (util::Status s = Apply(resize, image)) return s;
    if (image->Xsize == width && image->Ysize == height) return util::kNoError;
    VipsCall fit("embed");
    fit.Set("in", image.get())
        .Set("x", 0)
        .Set("y", 0)
        .Set("width", width)
        .Set("height", height)
        .SetEnum("extend", VIPS_TYPE_EXTEND, VIPS_EXTEND_COPY);
    return Apply(fit, image);
}

util::Status DrawEffect(VipsImagePtr& image, VipsImage* second, const EffectRecipe& recipe) {
    if (util::Status s = Draw(image, second, recipe)) return s;
    // Whatever an operation answers, the writer after it gets 8-bit sRGB in three bands.
    if (util::Status s = CastToBytes(image)) return s;
    if (image->Bands == 1) {
        VipsCall three("bandjoin");
        three.SetImages("in", {image.get(), image.get(), image.get()});
        if (util::Status s = Apply(three, image)) return s;
    }
    if (image->Type == VIPS_INTERPRETATION_sRGB) return util::kNoError;
    VipsCall label("copy");
    label.Set("in", image.get()).SetEnum("interpretation", VIPS_TYPE_INTERPRETATION, VIPS_INTERPRETATION_sRGB);
    return Apply(label, image);
}

}  // namespace vd::platform
