// The sound-editing functions: Vandrel_Amplify, Vandrel_Normalize, Vandrel_AppendSound,
// Vandrel_MixSounds, Vandrel_ExtractSound and Vandrel_FadeSound. Each answers the edited sound as
// a container, or its status text when a step fails.
#pragma once

#include "fmapi/function_call.h"

namespace vd::sound {

fmapi::Outcome AmplifyFunction(const FunctionCall& call);
fmapi::Outcome NormalizeFunction(const FunctionCall& call);
fmapi::Outcome AppendSoundFunction(const FunctionCall& call);
fmapi::Outcome MixSoundsFunction(const FunctionCall& call);
fmapi::Outcome ExtractSoundFunction(const FunctionCall& call);
fmapi::Outcome FadeSoundFunction(const FunctionCall& call);

}  // namespace vd::sound
