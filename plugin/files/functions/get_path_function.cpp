#include "files/file_operations.h"
#include "files/functions/file_functions.h"
#include "fmapi/args/arguments.h"
#include "fmapi/args/host_number.h"

namespace vd::files {

namespace {

constexpr util::Status kWrongCount = 20100;

}  // namespace

FMX_ErrCode GetPathFunction(const FunctionCall& call) {
    VDSError& error = Begin("Vandrel_GetPath");
    // The message has never matched the registered counts (1 or 2); scripts compare it as it is.
    const uint16_t count = ArgCount(call.args);
    if (count == 0) return Answer(error, call.result, Failed(kWrongCount, "Requires either 0 or 1 parameters"));
    const PathArgument item = ReadPathArgument(call.args, 0);
    const int32_t levels = count > 1 ? fmapi::FixPtAsLong(ArgNumber(call.args, 1)) : 0;
    return Answer(error, call.result, GetPath(item, levels));
}

}  // namespace vd::files
