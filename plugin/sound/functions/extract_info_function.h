// Vandrel_ExtractInfo ( report { ; key } )
#pragma once

#include "fmapi/function_call.h"

namespace vd::sound {

fmapi::Outcome ExtractInfoFunction(const FunctionCall& call);

}  // namespace vd::sound
