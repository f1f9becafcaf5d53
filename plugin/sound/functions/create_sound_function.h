// Vandrel_CreateSound ( waveform { ; duration ; frequency } )
#pragma once

#include "fmapi/function_call.h"

namespace vd::sound {

fmapi::Outcome CreateSoundFunction(const FunctionCall& call);

}  // namespace vd::sound
