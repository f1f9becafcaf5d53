#include "files/file_operations.h"
#include "files/functions/file_functions.h"
#include "fmapi/args/arguments.h"

namespace vd::files {

fmapi::Outcome GetDefaultFolderFunction(const FunctionCall&) { return GetDefaultFolder(); }

}  // namespace vd::files
