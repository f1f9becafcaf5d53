// The sound functions' handlers, as the function table names them. Each reads its arguments,
// calls its operation (sound/synthesis, editing, information, waveform) and answers the outcome:
// a sound as a container, a text, or the failed step's status.
#pragma once

#include "fmapi/function_call.h"

namespace vd::sound {

// Vandrel_CreateSound ( waveform { ; duration ; frequency } )
fmapi::Outcome CreateSoundFunction(const FunctionCall& call);

// Vandrel_Amplify, Vandrel_Normalize, Vandrel_AppendSound, Vandrel_MixSounds, Vandrel_ExtractSound
// and Vandrel_FadeSound: the edited sound as a container.
fmapi::Outcome AmplifyFunction(const FunctionCall& call);
fmapi::Outcome NormalizeFunction(const FunctionCall& call);
fmapi::Outcome AppendSoundFunction(const FunctionCall& call);
fmapi::Outcome MixSoundsFunction(const FunctionCall& call);
fmapi::Outcome ExtractSoundFunction(const FunctionCall& call);
fmapi::Outcome FadeSoundFunction(const FunctionCall& call);

// Vandrel_GetSoundInfo ( sound )
fmapi::Outcome SoundInfoFunction(const FunctionCall& call);

// Vandrel_ExtractInfo ( report { ; key } )
fmapi::Outcome ExtractInfoFunction(const FunctionCall& call);

// Vandrel_ListSoundOutputFormats, Vandrel_SoundFormatDialog ( format ) and
// Vandrel_ConvertSound ( sound ; file ; format { ; settings } )
fmapi::Outcome ListSoundOutputFormatsFunction(const FunctionCall& call);
fmapi::Outcome SoundFormatDialogFunction(const FunctionCall& call);
fmapi::Outcome ConvertSoundFunction(const FunctionCall& call);

// Vandrel_DrawWaveform ( sound ; trackChannel ; width ; height { ; start ; end ; waveColor ; backColor } )
fmapi::Outcome DrawWaveformFunction(const FunctionCall& call);

}  // namespace vd::sound
