// The lines of Vandrel_ListFolder.
#pragma once

#include <string>
#include <string_view>

#include "platform/fs/folder_entries.h"

namespace vd::files {

inline constexpr std::string_view kFolderMarker = "\xC6\x92";  // "ƒ"
inline constexpr std::string_view kInvisibleMarker = "~";
inline constexpr std::string_view kAliasMarker = "^";

// Adds the entry's line to the listing, lines separated by returns. Without listAll only plain
// visible files are listed, by name alone; with it every item is, after its markers in the order
// folder, invisible, alias.
void AppendListingLine(std::string& listing, const platform::fs::FolderEntry& entry, bool listAll);

}  // namespace vd::files
