// Vandrel_GetSoundInfo ( sound )
#pragma once

#include "fmapi/function_call.h"

namespace vd::sound {

fmapi::Outcome SoundInfoFunction(const FunctionCall& call);

}  // namespace vd::sound
