#include "platform/fs/mount_watch.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

namespace vd::platform::fs {

namespace {

ino_t MountNamespaceNow() {
    struct stat info {};
    return ::stat("/proc/self/ns/mnt", &info) == 0 ? info.st_ino : 0;
}

}  // namespace

bool MountWatch::LabelFolderState::operator==(const LabelFolderState& other) const {
    const auto same = [](const timespec& a, const timespec& b) { return a.tv_sec == b.tv_sec && a.tv_nsec == b.tv_nsec; };
    return present == other.present && inode == other.inode && same(modified, other.modified) &&
           same(changed, other.changed);
}

MountWatch::MountWatch(const char* labelFolder) : labelFolder_(labelFolder) {
    Open();
    labels_ = LabelsNow();
}

void MountWatch::Open() {
    mountInfo_ = UniqueFd(::open("/proc/self/mountinfo", O_RDONLY | O_CLOEXEC));
    owner_ = ::getpid();
    mountSpace_ = MountNamespaceNow();
}

MountWatch::LabelFolderState MountWatch::LabelsNow() const {
    LabelFolderState state;
    struct stat info {};
    if (::stat(labelFolder_, &info) != 0) return state;
    state.present = true;
    state.inode = info.st_ino;
    state.modified = info.st_mtim;
    state.changed = info.st_ctim;
    return state;
}

bool MountWatch::Changed() {
    bool changed = false;
    if (!mountInfo_.Valid() || owner_ != ::getpid() || mountSpace_ != MountNamespaceNow()) {
        // A new descriptor starts unmarked, so whatever changed before it counts as a change.
        Open();
        changed = true;
    } else {
        pollfd watch{mountInfo_.Get(), POLLPRI, 0};
        changed = ::poll(&watch, 1, 0) != 0;  // marked, or poll failed: look again either way
    }
    if (!mountInfo_.Valid()) changed = true;
    const LabelFolderState labels = LabelsNow();
    if (!(labels == labels_)) changed = true;
    labels_ = labels;
    return changed;
}

}  // namespace vd::platform::fs
