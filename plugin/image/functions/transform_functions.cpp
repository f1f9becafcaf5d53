// Vandrel_TScale, Vandrel_TSkew, Vandrel_TRotate, Vandrel_TCrop, Vandrel_TResize, Vandrel_TQuad and
// Vandrel_TClear change the shared transform state and answer an empty text; Vandrel_TApply draws
// a picture through it; Vandrel_GetImageInfo describes a picture.
#include "image/functions/transform_functions.h"

#include "fmapi/args/arguments.h"
#include "fmapi/args/host_number.h"
#include "image/image_info.h"
#include "image/transform/apply_transform.h"
#include "image/transform/transform_state.h"

namespace vd::image {

namespace {

double NumberArg(const FMX_DataVect* args, uint32_t i) { return fmapi::FixPtAsFloat(ArgNumber(args, i)); }
int16_t ShortArg(const FMX_DataVect* args, uint32_t i) { return int16_t(fmapi::FixPtAsLong(ArgNumber(args, i))); }

fmapi::Outcome Done() { return fmapi::Outcome::Text(std::string()); }

}  // namespace

fmapi::Outcome TScaleFunction(const FunctionCall& call) {
    const Fixed x = X2Fix(NumberArg(call.args, 0)), y = X2Fix(NumberArg(call.args, 1));
    ScaleMatrix(SharedTransformState().matrix, x, y, 0, 0);
    return Done();
}

fmapi::Outcome TSkewFunction(const FunctionCall& call) {
    const Fixed x = X2Fix(NumberArg(call.args, 0)), y = X2Fix(NumberArg(call.args, 1));
    SkewMatrix(SharedTransformState().matrix, x, y, 0, 0);
    return Done();
}

fmapi::Outcome TRotateFunction(const FunctionCall& call) {
    RotateMatrix(SharedTransformState().matrix, X2Fix(NumberArg(call.args, 0)), 0, 0);
    return Done();
}

fmapi::Outcome TCropFunction(const FunctionCall& call) {
    Rect16 crop;
    crop.left = ShortArg(call.args, 0);
    crop.top = ShortArg(call.args, 1);
    crop.right = ShortArg(call.args, 2);
    crop.bottom = ShortArg(call.args, 3);
    SharedTransformState().crop = crop;
    return Done();
}

fmapi::Outcome TResizeFunction(const FunctionCall& call) {
    Rect16 resize;
    resize.left = 0;
    resize.top = 0;
    resize.right = ShortArg(call.args, 0);
    resize.bottom = ShortArg(call.args, 1);
    SharedTransformState().resize = resize;
    return Done();
}

fmapi::Outcome TQuadFunction(const FunctionCall& call) {
    QuadValues values;
    for (uint32_t i = 0; i < values.size(); ++i) values[i] = NumberArg(call.args, i);
    StoreQuad(SharedTransformState(), values);
    return Done();
}

fmapi::Outcome TClearFunction(const FunctionCall&) {
    ClearTransform(SharedTransformState());
    return Done();
}

fmapi::Outcome TApplyFunction(const FunctionCall& call) {
    return ApplyTransform(ArgData(call.args, 0), SharedTransformState());
}

fmapi::Outcome GetImageInfoFunction(const FunctionCall& call) { return DescribeImage(ArgData(call.args, 0)); }

}  // namespace vd::image
