#include "files/file_operations.h"
#include "files/functions/file_functions.h"
#include "fmapi/args/arguments.h"

namespace vd::files {

fmapi::Outcome ListFolderFunction(const FunctionCall& call) {
    const PathArgument folder = ReadPathArgument(call.args, 0);
    return ListFolder(folder, ArgHostBoolean(call.args, 1));
}

}  // namespace vd::files
