// Vandrel_ExtractInfo ( report { ; key } )
#pragma once

#include "fmapi/function_call.h"

namespace vd::sound {

FMX_ErrCode ExtractInfoFunction(const FunctionCall& call);

}  // namespace vd::sound
