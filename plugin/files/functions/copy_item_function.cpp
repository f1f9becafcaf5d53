#include "files/file_operations.h"
#include "files/functions/file_functions.h"
#include "fmapi/args/arg_count.h"
#include "fmapi/args/arguments.h"

namespace vd::files {

FMX_ErrCode CopyItemFunction(const FunctionCall& call) {
    VDSError& error = Begin("Vandrel_CopyItem");
    if (CheckArgCount(call.args, 3)) return Answer(error, call.result, WrongArgumentCount(3));
    const PathArgument source = ReadPathArgument(call.args, 0);
    const PathArgument destination = ReadPathArgument(call.args, 1);
    const bool replace = ArgHostBoolean(call.args, 2);
    return Answer(error, call.result, CopyItem(source, destination, replace));
}

}  // namespace vd::files
