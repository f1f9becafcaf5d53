#include "files/file_operations.h"
#include "files/functions/file_functions.h"
#include "fmapi/args/arguments.h"

namespace vd::files {

fmapi::Outcome MoveItemFunction(const FunctionCall& call) {
    const PathArgument source = ReadPathArgument(call.args, 0);
    return MoveItem(source, ReadPathArgument(call.args, 1));
}

}  // namespace vd::files
