#include "files/file_operations.h"
#include "files/functions/file_functions.h"
#include "fmapi/args/arguments.h"

namespace vd::files {

fmapi::Outcome CreateAliasFunction(const FunctionCall& call) {
    const PathArgument target = ReadPathArgument(call.args, 0);
    return CreateAlias(target, ReadPathArgument(call.args, 1));
}

}  // namespace vd::files
