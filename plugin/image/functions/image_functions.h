// The handlers of the image conversion functions (see frame/function_table.cpp).
#pragma once

#include "fmapi/function_call.h"

namespace vd::image {

fmapi::Outcome ConvertImageFunction(const FunctionCall& call);
fmapi::Outcome ListImageOutputTypesFunction(const FunctionCall& call);
fmapi::Outcome ConversionDialogFunction(const FunctionCall& call);
fmapi::Outcome SetImageDefaultsFunction(const FunctionCall& call);

}  // namespace vd::image
