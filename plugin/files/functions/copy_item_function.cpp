#include "files/file_operations.h"
#include "files/functions/file_functions.h"
#include "fmapi/args/arguments.h"

namespace vd::files {

fmapi::Outcome CopyItemFunction(const FunctionCall& call) {
    const PathArgument source = ReadPathArgument(call.args, 0);
    const PathArgument destination = ReadPathArgument(call.args, 1);
    return CopyItem(source, destination, ArgHostBoolean(call.args, 2));
}

}  // namespace vd::files
