// The handlers of the metadata functions.
#pragma once

#include "fmapi/function_call.h"

namespace vd::metadata {

// Vandrel_GetMetadata ( containerOrFile { ; tag ; format } ): the report of every tag, or the value
// of one tag (-2026 when the file does not hold it); format "interpreted" (default) or "raw".
fmapi::Outcome GetMetadataFunction(const FunctionCall& call);

// Vandrel_SetMetadata ( file ; tagValue { ; tagValue ... } ): each "key=value" (an empty value
// removes the tag), written in one step.
fmapi::Outcome SetMetadataFunction(const FunctionCall& call);

}  // namespace vd::metadata
