// The file functions' handlers: each reads its arguments in order, stopping at none (a path that
// cannot be read is the operation's to report), and answers its operation's outcome.
#include "files/file_operations.h"
#include "files/functions/file_functions.h"
#include "fmapi/args/arguments.h"
#include "fmapi/args/host_number.h"

namespace vd::files {

fmapi::Outcome CopyItemFunction(const FunctionCall& call) {
    const PathArgument source = ReadPathArgument(call.args, 0);
    const PathArgument destination = ReadPathArgument(call.args, 1);
    return CopyItem(source, destination, ArgHostBoolean(call.args, 2));
}

fmapi::Outcome CreateAliasFunction(const FunctionCall& call) {
    const PathArgument target = ReadPathArgument(call.args, 0);
    return CreateAlias(target, ReadPathArgument(call.args, 1));
}

fmapi::Outcome CreateFolderFunction(const FunctionCall& call) {
    const PathArgument parent = ReadPathArgument(call.args, 0);
    return CreateFolder(parent, ArgCText(ArgText(call.args, 1)));
}

fmapi::Outcome DeleteItemFunction(const FunctionCall& call) {
    const bool folderFlag = ArgHostBoolean(call.args, 1);
    return DeleteItem(ReadPathArgument(call.args, 0), folderFlag);
}

fmapi::Outcome GetDefaultFolderFunction(const FunctionCall&) { return GetDefaultFolder(); }

fmapi::Outcome GetItemInfoFunction(const FunctionCall& call) { return GetItemInfo(ReadPathArgument(call.args, 0)); }

fmapi::Outcome GetNameFunction(const FunctionCall& call) { return GetName(ReadPathArgument(call.args, 0)); }

fmapi::Outcome GetPathFunction(const FunctionCall& call) {
    const PathArgument item = ReadPathArgument(call.args, 0);
    const int32_t levels = ArgCount(call.args) > 1 ? fmapi::FixPtAsLong(ArgNumber(call.args, 1)) : 0;
    return GetPath(item, levels);
}

fmapi::Outcome ListDisksFunction(const FunctionCall&) { return ListDisks(); }

fmapi::Outcome ListFolderFunction(const FunctionCall& call) {
    const PathArgument folder = ReadPathArgument(call.args, 0);
    return ListFolder(folder, ArgHostBoolean(call.args, 1));
}

fmapi::Outcome MoveItemFunction(const FunctionCall& call) {
    const PathArgument source = ReadPathArgument(call.args, 0);
    return MoveItem(source, ReadPathArgument(call.args, 1));
}

fmapi::Outcome OpenItemFunction(const FunctionCall& call) { return OpenItem(ReadPathArgument(call.args, 0)); }

fmapi::Outcome RenameItemFunction(const FunctionCall& call) {
    const PathArgument item = ReadPathArgument(call.args, 0);
    return RenameItem(item, ArgCText(ArgText(call.args, 1)));
}

fmapi::Outcome SetDefaultFolderFunction(const FunctionCall& call) {
    return SetDefaultFolderTo(ReadPathArgument(call.args, 0));
}

}  // namespace vd::files
