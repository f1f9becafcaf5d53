// Vandrel_DrawWaveform ( sound ; trackChannel ; width ; height { ; start ; end ; waveColor ; backColor } )
#pragma once

#include "fmapi/function_call.h"

namespace vd::sound {

fmapi::Outcome DrawWaveformFunction(const FunctionCall& call);

}  // namespace vd::sound
