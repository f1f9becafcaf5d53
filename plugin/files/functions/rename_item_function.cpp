#include "files/file_operations.h"
#include "files/functions/file_functions.h"
#include "fmapi/args/arguments.h"

namespace vd::files {

fmapi::Outcome RenameItemFunction(const FunctionCall& call) {
    const PathArgument item = ReadPathArgument(call.args, 0);
    return RenameItem(item, ArgCText(ArgText(call.args, 1)));
}

}  // namespace vd::files
