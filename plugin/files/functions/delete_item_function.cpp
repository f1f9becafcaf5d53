#include "files/file_operations.h"
#include "files/functions/file_functions.h"
#include "fmapi/args/arguments.h"

namespace vd::files {

fmapi::Outcome DeleteItemFunction(const FunctionCall& call) {
    const bool folderFlag = ArgHostBoolean(call.args, 1);
    return DeleteItem(ReadPathArgument(call.args, 0), folderFlag);
}

}  // namespace vd::files
