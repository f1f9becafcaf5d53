// The handlers of the file functions (ids 64 to 77). Each reads its arguments and answers the
// outcome of its operation (files/file_operations.h).
#pragma once

#include "fmapi/function_call.h"

namespace vd::files {

fmapi::Outcome SetDefaultFolderFunction(const FunctionCall& call);
fmapi::Outcome GetDefaultFolderFunction(const FunctionCall& call);
fmapi::Outcome CopyItemFunction(const FunctionCall& call);
fmapi::Outcome MoveItemFunction(const FunctionCall& call);
fmapi::Outcome DeleteItemFunction(const FunctionCall& call);
fmapi::Outcome RenameItemFunction(const FunctionCall& call);
fmapi::Outcome CreateFolderFunction(const FunctionCall& call);
fmapi::Outcome ListFolderFunction(const FunctionCall& call);
fmapi::Outcome GetItemInfoFunction(const FunctionCall& call);
fmapi::Outcome CreateAliasFunction(const FunctionCall& call);
fmapi::Outcome OpenItemFunction(const FunctionCall& call);
fmapi::Outcome ListDisksFunction(const FunctionCall& call);
fmapi::Outcome GetPathFunction(const FunctionCall& call);
fmapi::Outcome GetNameFunction(const FunctionCall& call);

}  // namespace vd::files
