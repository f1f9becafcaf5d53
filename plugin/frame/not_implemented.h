// The handler of every function whose subsystem is not built yet.
#pragma once

#include "fmapi/function_call.h"

namespace vd {

// Names the function, sets -4 ("Feature is not implemented yet.") on the error object and answers
// its status text, so that scripts see the same shape of answer as from a working function.
FMX_ErrCode NotImplemented(const FunctionCall& call);

}  // namespace vd
