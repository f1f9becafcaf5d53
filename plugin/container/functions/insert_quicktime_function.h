// The handler of Vandrel_InsertQuickTime, as the function table names it.
#pragma once

#include "fmapi/function_call.h"

namespace vd::container {

// Vandrel_InsertQuickTime { ( file ) }: the file (a path, a reference text or a container stored
// by reference; chosen in an "Import" dialog without an argument) as the reference text the host
// stores in a container field.
fmapi::Outcome InsertQuickTimeFunction(const FunctionCall& call);

}  // namespace vd::container
