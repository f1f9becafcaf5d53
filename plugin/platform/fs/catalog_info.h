// What the item functions report about one item, gathered from the inode and the Finder attributes.
#pragma once

#include <cstdint>
#include <string>

#include "platform/fs/finder_info.h"
#include "util/status_codes.h"

namespace vd::platform::fs {

struct CatalogInfo {
    bool isFolder = false;
    bool isAlias = false;    // a symbolic link, or the Finder's alias flag
    bool isInvisible = false;  // a name that starts with ".", or the Finder's invisible flag
    bool isLocked = false;   // no write permission for the owner
    uint64_t dataSize = 0;
    uint64_t resourceSize = 0;
    // Seconds since 1970. Creation is the birth time where the file system records it, else the
    // time of the last change to the inode: the closest Linux has to "when this item came to be".
    int64_t creationTime = 0;
    int64_t modificationTime = 0;
    FinderInfo finder;
};

// The item itself: a symbolic link is described as the link (an alias), not as what it points to.
util::Status ReadCatalogInfo(const std::string& path, CatalogInfo& info);

// Seconds since 1904 as the report's date text wants them (the low 32 bits).
uint32_t MacSecondsFromUnix(int64_t unixSeconds);

}  // namespace vd::platform::fs
