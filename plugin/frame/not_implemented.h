// The handler of every function whose subsystem is not built yet.
#pragma once

#include "fmapi/function_call.h"

namespace vd {

// -4 ("Feature is not implemented yet."), so that scripts see the same shape of answer as from a
// working function.
fmapi::Outcome NotImplemented(const FunctionCall& call);

}  // namespace vd
