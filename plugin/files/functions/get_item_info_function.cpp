#include "files/file_operations.h"
#include "files/functions/file_functions.h"
#include "fmapi/args/arguments.h"

namespace vd::files {

fmapi::Outcome GetItemInfoFunction(const FunctionCall& call) { return GetItemInfo(ReadPathArgument(call.args, 0)); }

}  // namespace vd::files
