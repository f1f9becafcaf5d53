// The handlers of Vandrel_EffectDialog and Vandrel_EffectApply (see frame/function_table.cpp).
#pragma once

#include "fmapi/function_call.h"

namespace vd::image {

fmapi::Outcome EffectDialogFunction(const FunctionCall& call);
fmapi::Outcome EffectApplyFunction(const FunctionCall& call);

}  // namespace vd::image
