// The one function the host calls for every registered function: it finds the table row by id and
// runs the row's handler, and it is the one place where an exception from a handler stops.
#pragma once

#include <fmx/fmx.h>

namespace vd {

// Escaped std::bad_alloc becomes -108 on the error object, anything else -1; the result is then
// the status text, as the handler would have answered it. An id we never registered answers -50.
FMX_ErrCode DispatchCall(int16_t functionId, const FMX_ExprEnv* env, const FMX_DataVect* args,
                         FMX_Data* result) noexcept;

}  // namespace vd
