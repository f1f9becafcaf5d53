// What a function's handler is given: its own table row (so shared handlers know which function
// they are) and the host's environment, arguments and result.
#pragma once

#include <fmx/fmx.h>

namespace vd {

struct FunctionEntry;

struct FunctionCall {
    const FunctionEntry& entry;
    const FMX_ExprEnv* env;
    const FMX_DataVect* args;
    FMX_Data* result;
};

// A handler answers 0, or an error code that the host shows for the call. It may throw; the
// dispatch around it (handler_dispatch.h) turns what escapes into the error object.
using Handler = FMX_ErrCode (*)(const FunctionCall& call);

}  // namespace vd
