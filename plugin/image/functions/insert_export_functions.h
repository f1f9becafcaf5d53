// The handlers of the functions that move data between files and containers (see
// frame/function_table.cpp).
#pragma once

#include "fmapi/function_call.h"

namespace vd::image {

fmapi::Outcome InsertImageFunction(const FunctionCall& call);
fmapi::Outcome InsertFileFunction(const FunctionCall& call);
fmapi::Outcome ExportFieldFunction(const FunctionCall& call);

}  // namespace vd::image
