#include "files/file_operations.h"
#include "files/functions/file_functions.h"
#include "fmapi/args/arg_count.h"
#include "fmapi/args/arguments.h"

namespace vd::files {

FMX_ErrCode GetDefaultFolderFunction(const FunctionCall& call) {
    VDSError& error = Begin("Vandrel_GetDefaultFolder");
    if (CheckArgCount(call.args, 0)) return Answer(error, call.result, WrongArgumentCount(0));
    return Answer(error, call.result, GetDefaultFolder());
}

}  // namespace vd::files
