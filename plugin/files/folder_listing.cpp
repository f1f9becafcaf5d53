#include "files/folder_listing.h"

#include <new>

#include "files/default_folder.h"
#include "files/file_operations.h"
#include "platform/fs/finder_info.h"
#include "platform/fs/item_probe.h"

namespace vd::files {

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

}  // namespace vd::files
