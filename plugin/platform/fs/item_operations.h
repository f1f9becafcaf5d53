// The single-step changes to the file system that the file functions make.
#pragma once

#include <string>
#include <string_view>

#include "platform/fs/item_probe.h"
#include "util/status_codes.h"

namespace vd::platform::fs {

// What the item itself is, a symbolic link not followed (a link counts as a file: it is an alias
// file, whatever it points to). Missing when there is nothing of that name, not even a broken link.
ItemProbe ProbeItemItself(const std::string& path);

// A name that can stand for one item inside a folder: not empty, no "/" or NUL, not "." or "..",
// and short enough for the file system. Mac names may hold "/"; Linux names cannot (-37).
bool IsUsableName(std::string_view name);

util::Status CreateFolder(const std::string& path);

// Renames, never over an existing item: a Mac rename or move refuses an existing name (-48).
util::Status RenameWithoutReplacing(const std::string& from, const std::string& to);

// A symbolic link at linkPath holding target.
util::Status CreateSymbolicLink(const std::string& target, const std::string& linkPath);

}  // namespace vd::platform::fs
