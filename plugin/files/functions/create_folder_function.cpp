#include "files/file_operations.h"
#include "files/functions/file_functions.h"
#include "fmapi/args/arguments.h"

namespace vd::files {

fmapi::Outcome CreateFolderFunction(const FunctionCall& call) {
    const PathArgument parent = ReadPathArgument(call.args, 0);
    return CreateFolder(parent, ArgCText(ArgText(call.args, 1)));
}

}  // namespace vd::files
