#include "platform/fs/location_finisher.h"

#include "platform/fs/item_probe.h"

namespace vd::util {

namespace {

using platform::fs::ItemKind;
using platform::fs::ProbeItem;

void SetVolume(const std::vector<platform::fs::Volume>& volumes, FileLocation& location) {
    const platform::fs::Volume& volume = platform::fs::VolumeHolding(volumes, location.existingPath);
    location.volumeName = volume.name;
    location.onBootVolume = volume.isBoot;
}

}  // namespace

Status FinishLocation(const std::string& target, const std::vector<platform::fs::Volume>& volumes,
                      FileLocation& location) {
    const platform::fs::ItemProbe item = ProbeItem(target);
    if (item.status != kNoError) return item.status;
    if (item.kind != ItemKind::Missing) {
        location.existingPath = target;
        location.leafName.clear();
        SetVolume(volumes, location);
        return kNoError;
    }

    // The root always exists, so a missing target has a last component and a folder before it.
    const size_t slash = target.rfind('/');
    if (slash == std::string::npos) return kBadParameter;
    std::string folder = slash == 0 ? std::string("/") : target.substr(0, slash);
    const platform::fs::ItemProbe parent = ProbeItem(folder);
    if (parent.status != kNoError) return parent.status;
    if (parent.kind == ItemKind::Missing) return kFileNotFound;
    if (parent.kind != ItemKind::Folder) return kNotAFolder;

    location.existingPath = std::move(folder);
    location.leafName = target.substr(slash + 1);
    SetVolume(volumes, location);
    return kNoError;
}

}  // namespace vd::util
