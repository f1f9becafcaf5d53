// The handlers of the transform functions and of Vandrel_GetImageInfo (see frame/function_table.cpp).
#pragma once

#include "fmapi/function_call.h"

namespace vd::image {

fmapi::Outcome TScaleFunction(const FunctionCall& call);
fmapi::Outcome TSkewFunction(const FunctionCall& call);
fmapi::Outcome TRotateFunction(const FunctionCall& call);
fmapi::Outcome TCropFunction(const FunctionCall& call);
fmapi::Outcome TResizeFunction(const FunctionCall& call);
fmapi::Outcome TQuadFunction(const FunctionCall& call);
fmapi::Outcome TClearFunction(const FunctionCall& call);
fmapi::Outcome TApplyFunction(const FunctionCall& call);
fmapi::Outcome GetImageInfoFunction(const FunctionCall& call);

}  // namespace vd::image
