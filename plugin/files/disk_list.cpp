#include "files/disk_list.h"

#include "files/file_operations.h"
#include "platform/fs/volumes.h"

namespace vd::files {

std::string JoinDiskNames(const std::vector<std::string>& names, size_t capacity) {
    std::string list;
    for (const std::string& name : names) {
        const size_t grown = list.size() + (list.empty() ? 0 : 1) + name.size();
        if (grown + 1 > capacity) break;
        if (!list.empty()) list += '|';
        list += name;
    }
    return list;
}

fmapi::Outcome ListDisks() {
    std::vector<std::string> names;
    for (const platform::fs::Volume& volume : platform::fs::MountedVolumes()) names.push_back(volume.name);
    return Succeeded(JoinDiskNames(names));
}

}  // namespace vd::files
