#include "files/file_operations.h"
#include "files/functions/file_functions.h"
#include "fmapi/args/arguments.h"
#include "fmapi/args/host_number.h"

namespace vd::files {

fmapi::Outcome GetPathFunction(const FunctionCall& call) {
    const PathArgument item = ReadPathArgument(call.args, 0);
    const int32_t levels = ArgCount(call.args) > 1 ? fmapi::FixPtAsLong(ArgNumber(call.args, 1)) : 0;
    return GetPath(item, levels);
}

}  // namespace vd::files
