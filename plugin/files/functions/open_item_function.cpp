#include "files/file_operations.h"
#include "files/functions/file_functions.h"
#include "fmapi/args/arguments.h"

namespace vd::files {

fmapi::Outcome OpenItemFunction(const FunctionCall& call) { return OpenItem(ReadPathArgument(call.args, 0)); }

}  // namespace vd::files
