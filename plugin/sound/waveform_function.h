// Vandrel_DrawWaveform ( sound ; trackChannel ; width ; height { ; start ; end ; waveColor ; backColor } )
#pragma once

#include "frame/function_call.h"

namespace vd::sound {

FMX_ErrCode DrawWaveformFunction(const FunctionCall& call);

}  // namespace vd::sound
