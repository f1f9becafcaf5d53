#include "files/file_operations.h"
#include "files/functions/file_functions.h"
#include "fmapi/args/arguments.h"

namespace vd::files {

fmapi::Outcome SetDefaultFolderFunction(const FunctionCall& call) {
    return SetDefaultFolderTo(ReadPathArgument(call.args, 0));
}

}  // namespace vd::files
