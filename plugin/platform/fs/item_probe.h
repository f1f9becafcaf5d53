// Whether an item exists and what it is, with the file system's refusal turned into a status code.
#pragma once

#include <string>

#include "platform/common/posix_status.h"
#include "util/status_codes.h"

namespace vd::platform::fs {

enum class ItemKind { Missing, Folder, File };

struct ItemProbe {
    util::Status status = util::kNoError;  // non-zero only for failures other than "not there"
    ItemKind kind = ItemKind::Missing;
};

// Follows symbolic links, as opening the item would. A path through a file ("a.txt/b") or a link
// that leads nowhere (broken, or looping back on itself) is missing, not an error: the caller
// decides what a missing item means for it.
ItemProbe ProbeItem(const std::string& path);

}  // namespace vd::platform::fs
