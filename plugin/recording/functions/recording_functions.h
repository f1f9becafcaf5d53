// The recording functions: Vandrel_RecordSoundStart, Vandrel_RecordSoundPause,
// Vandrel_RecordSoundStop and Vandrel_RecordSoundFormatDialog.
#pragma once

#include "fmapi/function_call.h"

namespace vd::recording {

fmapi::Outcome RecordSoundStartFunction(const FunctionCall& call);
fmapi::Outcome RecordSoundPauseFunction(const FunctionCall& call);
fmapi::Outcome RecordSoundStopFunction(const FunctionCall& call);
fmapi::Outcome RecordSoundFormatDialogFunction(const FunctionCall& call);

}  // namespace vd::recording
