#include "files/file_operations.h"
#include "files/functions/file_functions.h"
#include "fmapi/args/arg_count.h"
#include "fmapi/args/arguments.h"

namespace vd::files {

FMX_ErrCode CreateAliasFunction(const FunctionCall& call) {
    VDSError& error = Begin("Vandrel_CreateAlias");
    if (CheckArgCount(call.args, 2)) return Answer(error, call.result, WrongArgumentCount(2));
    const PathArgument target = ReadPathArgument(call.args, 0);
    const PathArgument alias = ReadPathArgument(call.args, 1);
    return Answer(error, call.result, CreateAlias(target, alias));
}

}  // namespace vd::files
