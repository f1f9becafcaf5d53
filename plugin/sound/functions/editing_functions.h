// The sound-editing functions: Vandrel_Amplify, Vandrel_Normalize, Vandrel_AppendSound,
// Vandrel_MixSounds, Vandrel_ExtractSound and Vandrel_FadeSound. Each answers the edited sound as
// a container, or its status text when a step fails.
#pragma once

#include "fmapi/function_call.h"

namespace vd::sound {

FMX_ErrCode AmplifyFunction(const FunctionCall& call);
FMX_ErrCode NormalizeFunction(const FunctionCall& call);
FMX_ErrCode AppendSoundFunction(const FunctionCall& call);
FMX_ErrCode MixSoundsFunction(const FunctionCall& call);
FMX_ErrCode ExtractSoundFunction(const FunctionCall& call);
FMX_ErrCode FadeSoundFunction(const FunctionCall& call);

}  // namespace vd::sound
