// The playback and settings functions' handlers, as the function table names them.
#pragma once

#include "fmapi/function_call.h"

namespace vd::playback {

// Vandrel_PlaySound ( sound { ; asynchronous ; start ; end } )
fmapi::Outcome PlaySoundFunction(const FunctionCall& call);
// Vandrel_StopSound
fmapi::Outcome StopSoundFunction(const FunctionCall& call);
// Vandrel_PlayPause { ( soundId ) }
fmapi::Outcome PlayPauseFunction(const FunctionCall& call);
// Vandrel_Get ( tag ) and Vandrel_Set ( tag { ; value } ): failures are the call's error code.
fmapi::Outcome GetFunction(const FunctionCall& call);
fmapi::Outcome SetFunction(const FunctionCall& call);

}  // namespace vd::playback
