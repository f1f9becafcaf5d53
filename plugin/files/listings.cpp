// The operations that list: a folder's items and the mounted disks.
#include <new>
#include <string>
#include <string_view>
#include <vector>

#include "files/default_folder.h"
#include "files/file_operations.h"
#include "platform/fs/finder_info.h"
#include "platform/fs/folder_entries.h"
#include "platform/fs/item_probe.h"
#include "platform/fs/volumes.h"

namespace vd::files {

namespace {

constexpr std::string_view kFolderMarker = "\xC6\x92";  // "ƒ"
constexpr std::string_view kInvisibleMarker = "~";
constexpr std::string_view kAliasMarker = "^";

constexpr size_t kDiskListCapacity = 500;  // see JoinDiskNames

// Adds the entry's line to the listing, lines separated by returns. Without listAll only plain
// visible files are listed, by name alone; with it every item is, after its markers in the order
// folder, invisible, alias.
void AppendListingLine(std::string& listing, const platform::fs::FolderEntry& entry, bool listAll) {
    using platform::fs::EntryKind;
    const bool folder = entry.kind == EntryKind::Folder;
    const bool invisible = entry.name.starts_with('.') || (entry.finderFlags & platform::fs::kFinderFlagInvisible);
    const bool alias = entry.kind == EntryKind::Link || (entry.finderFlags & platform::fs::kFinderFlagAlias);
    if (!listAll && (folder || invisible || alias)) return;
    if (!listing.empty()) listing += '\r';
    if (listAll) {
        if (folder) listing += kFolderMarker;
        if (invisible) listing += kInvisibleMarker;
        if (alias) listing += kAliasMarker;
    }
    listing += entry.name;
}

}  // namespace

std::string JoinDiskNames(const std::vector<std::string>& names) {
    std::string list;
    for (const std::string& name : names) {
        const size_t grown = list.size() + (list.empty() ? 0 : 1) + name.size();
        if (grown + 1 > kDiskListCapacity) break;
        if (!list.empty()) list += '|';
        list += name;
    }
    return list;
}

fmapi::Outcome ListFolder(const PathArgument& argument, bool listAll) {
    const ResolvedItem item = ResolveFilePath(argument, DefaultFolder());
    if (!item.Exists()) return FailedToResolve(item, "ListFolder failed");
    const std::string folder = item.Path();
    const platform::fs::ItemProbe probe = platform::fs::ProbeItem(folder);
    if (probe.status != util::kNoError) return Failed(probe.status, "ListFolder failed");
    if (probe.kind != platform::fs::ItemKind::Folder) {
        return Failed(util::kNotAFolder, "ListFolder requires destination directory, not file");
    }
    std::string listing;
    bool outOfMemory = false;
    const util::Status status = platform::fs::ReadFolderEntries(
        folder, true, [&](const platform::fs::FolderEntry& entry) {
            try {
                AppendListingLine(listing, entry, listAll);
                return true;
            } catch (const std::bad_alloc&) {
                outOfMemory = true;
                return false;
            }
        });
    if (outOfMemory) return Failed(util::kMemoryFull, "Out of memory");
    if (status != util::kNoError) return Failed(status, "ListFolder failed");
    return Succeeded(std::move(listing), &item);
}

fmapi::Outcome ListDisks() {
    std::vector<std::string> names;
    for (const platform::fs::Volume& volume : platform::fs::MountedVolumes()) names.push_back(volume.name);
    return Succeeded(JoinDiskNames(names));
}

}  // namespace vd::files
