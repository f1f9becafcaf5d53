#include "files/file_operations.h"
#include "files/functions/file_functions.h"
#include "fmapi/args/arg_count.h"
#include "fmapi/args/arguments.h"

namespace vd::files {

FMX_ErrCode ListDisksFunction(const FunctionCall& call) {
    VDSError& error = Begin("Vandrel_ListDisks");
    if (CheckArgCount(call.args, 0)) return Answer(error, call.result, WrongArgumentCount(0));
    return Answer(error, call.result, ListDisks());
}

}  // namespace vd::files
