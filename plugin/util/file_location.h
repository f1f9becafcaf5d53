// Where a path text leads: the record every path form resolves to.
#pragma once

#include <string>

namespace vd::util {

struct FileLocation {
    // The item (or the folder that would hold it) lies on the root file system.
    bool onBootVolume = false;
    // The volume holding the item: its label, its mount point's last component, or "root".
    std::string volumeName;
    // "Volumes" when the text named the volumes folder itself ("/Volumes/"), so that a caller that
    // lists a folder can list the mounted volumes instead; empty otherwise.
    std::string volumesFolderPath;
    // Absolute path of the target when it exists (file or folder), else of the folder that would
    // hold it. Normalised: no ".", "..", empty pieces or trailing separator.
    std::string existingPath;
    // The target's name when the target does not exist yet; empty when it exists.
    std::string leafName;
};

// The target's absolute path: the existing item, or the folder plus the leaf name.
std::string FullPath(const FileLocation& location);

}  // namespace vd::util
