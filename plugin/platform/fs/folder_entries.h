// One pass over a folder's direct contents, in the order the file system keeps them: the folder is
// read once, and what each entry is comes from the folder itself wherever the file system says so,
// so that listing a large folder costs about what reading it costs.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "util/status_codes.h"

namespace vd::platform::fs {

enum class EntryKind { Folder, File, Link, Other };

struct FolderEntry {
    std::string_view name;
    EntryKind kind = EntryKind::File;
    uint16_t finderFlags = 0;  // read only when asked for, and never for names that start with "."
};

// Calls visit for every entry but "." and ".."; visit answers false to stop the walk. An entry that
// vanishes while the folder is read is passed over. With Finder flags the folder is read whole
// before the first visit, and the flags of a large folder are read by a few threads at once.
// -108 when the entries cannot be held.
util::Status ReadFolderEntries(const std::string& folder, bool withFinderFlags,
                               const std::function<bool(const FolderEntry&)>& visit);

}  // namespace vd::platform::fs
