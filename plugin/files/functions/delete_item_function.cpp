#include "files/file_operations.h"
#include "files/functions/file_functions.h"
#include "fmapi/args/arg_count.h"
#include "fmapi/args/arguments.h"

namespace vd::files {

FMX_ErrCode DeleteItemFunction(const FunctionCall& call) {
    VDSError& error = Begin("Vandrel_DeleteItem");
    if (CheckArgCount(call.args, 2)) return Answer(error, call.result, WrongArgumentCount(2));
    const bool folderFlag = ArgHostBoolean(call.args, 1);
    return Answer(error, call.result, DeleteItem(ReadPathArgument(call.args, 0), folderFlag));
}

}  // namespace vd::files
