// What a function's handler is given: its own table row (so shared handlers know which function
// they are) and the host's environment and arguments. The host's result is the dispatch's to set.
#pragma once

#include "fmapi/outcome.h"

#include <fmx/fmx.h>

namespace vd {

struct FunctionEntry;

struct FunctionCall {
    const FunctionEntry& entry;
    const FMX_ExprEnv* env;
    const FMX_DataVect* args;
};

// A handler answers the outcome of its function (fmapi/outcome.h). It may throw; the dispatch
// around it (frame/handler_dispatch.h) turns what escapes into the error object.
using Handler = fmapi::Outcome (*)(const FunctionCall& call);

}  // namespace vd
