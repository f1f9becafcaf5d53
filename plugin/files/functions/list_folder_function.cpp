#include "files/file_operations.h"
#include "files/functions/file_functions.h"
#include "fmapi/args/arg_count.h"
#include "fmapi/args/arguments.h"

namespace vd::files {

FMX_ErrCode ListFolderFunction(const FunctionCall& call) {
    VDSError& error = Begin("Vandrel_ListFolder");
    if (CheckArgCount(call.args, 2)) return Answer(error, call.result, WrongArgumentCount(2));
    const PathArgument folder = ReadPathArgument(call.args, 0);
    const bool listAll = ArgHostBoolean(call.args, 1);
    return Answer(error, call.result, ListFolder(folder, listAll));
}

}  // namespace vd::files
