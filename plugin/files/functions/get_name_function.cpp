#include "files/file_operations.h"
#include "files/functions/file_functions.h"
#include "fmapi/args/arguments.h"

namespace vd::files {

fmapi::Outcome GetNameFunction(const FunctionCall& call) { return GetName(ReadPathArgument(call.args, 0)); }

}  // namespace vd::files
