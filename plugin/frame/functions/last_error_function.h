// Vandrel_GetLastError: the outcome of the function called before it, as a status text.
#pragma once

#include "fmapi/function_call.h"

namespace vd {

// "$code:message" of the error object, which it leaves as it is, so it can be asked twice.
fmapi::Outcome LastErrorFunction(const FunctionCall& call);

}  // namespace vd
