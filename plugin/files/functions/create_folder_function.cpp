#include "files/file_operations.h"
#include "files/functions/file_functions.h"
#include "fmapi/args/arg_count.h"
#include "fmapi/args/arguments.h"

namespace vd::files {

FMX_ErrCode CreateFolderFunction(const FunctionCall& call) {
    VDSError& error = Begin("Vandrel_CreateFolder");
    if (CheckArgCount(call.args, 2)) return Answer(error, call.result, WrongArgumentCount(2));
    const PathArgument parent = ReadPathArgument(call.args, 0);
    const std::string name = ArgCText(ArgText(call.args, 1));
    return Answer(error, call.result, CreateFolder(parent, name));
}

}  // namespace vd::files
