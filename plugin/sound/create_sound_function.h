// Vandrel_CreateSound ( waveform { ; duration ; frequency } )
#pragma once

#include "frame/function_call.h"

namespace vd::sound {

FMX_ErrCode CreateSoundFunction(const FunctionCall& call);

}  // namespace vd::sound
