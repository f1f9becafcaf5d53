// The one function the host calls for every registered function. It finds the table row by id,
// applies the row's count rule, runs the row's handler and reports the outcome: the error object
// gets the code, the message and the row's name, and the result the value or the status text. It is
// also the one place where an exception from a handler stops.
#pragma once

#include <fmx/fmx.h>

namespace vd {

// Escaped std::bad_alloc becomes -108 on the error object, anything else -1; the result is then
// the status text. An id we never registered answers -50.
FMX_ErrCode DispatchCall(int16_t functionId, const FMX_ExprEnv* env, const FMX_DataVect* args,
                         FMX_Data* result) noexcept;

}  // namespace vd
