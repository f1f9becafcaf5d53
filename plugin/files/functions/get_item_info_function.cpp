#include "files/file_operations.h"
#include "files/functions/file_functions.h"
#include "fmapi/args/arg_count.h"
#include "fmapi/args/arguments.h"

namespace vd::files {

FMX_ErrCode GetItemInfoFunction(const FunctionCall& call) {
    VDSError& error = Begin("Vandrel_GetItemInfo");
    if (CheckArgCount(call.args, 1)) return Answer(error, call.result, WrongArgumentCount(1));
    return Answer(error, call.result, GetItemInfo(ReadPathArgument(call.args, 0)));
}

}  // namespace vd::files
