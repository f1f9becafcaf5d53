// The handlers of the file functions (ids 64 to 77). Each reads its arguments, runs its operation
// (files/file_operations.h) and answers the outcome.
#pragma once

#include "fmapi/function_call.h"

namespace vd::files {

FMX_ErrCode SetDefaultFolderFunction(const FunctionCall& call);
FMX_ErrCode GetDefaultFolderFunction(const FunctionCall& call);
FMX_ErrCode CopyItemFunction(const FunctionCall& call);
FMX_ErrCode MoveItemFunction(const FunctionCall& call);
FMX_ErrCode DeleteItemFunction(const FunctionCall& call);
FMX_ErrCode RenameItemFunction(const FunctionCall& call);
FMX_ErrCode CreateFolderFunction(const FunctionCall& call);
FMX_ErrCode ListFolderFunction(const FunctionCall& call);
FMX_ErrCode GetItemInfoFunction(const FunctionCall& call);
FMX_ErrCode CreateAliasFunction(const FunctionCall& call);
FMX_ErrCode OpenItemFunction(const FunctionCall& call);
FMX_ErrCode ListDisksFunction(const FunctionCall& call);
FMX_ErrCode GetPathFunction(const FunctionCall& call);
FMX_ErrCode GetNameFunction(const FunctionCall& call);

}  // namespace vd::files
