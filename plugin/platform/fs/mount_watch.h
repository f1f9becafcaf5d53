// Whether this machine's volumes may have changed since the last look. Reading the mount table and
// asking after every mount point and label costs far more than a call that resolves a path, and
// paths are resolved for every file argument; two cheap checks tell when it must be done again. The
// kernel marks an open /proc/self/mountinfo whenever something is mounted or unmounted (poll
// answers POLLPRI), and udev adds and removes the links of /dev/disk/by-label as labels come and
// go, which moves the folder's times.
#pragma once

#include "platform/common/unique_fd.h"

#include <sys/types.h>
#include <time.h>

namespace vd::platform::fs {

class MountWatch {
public:
    // Opens the mount table at once: the watch's descriptor lives as long as the process, and one
    // that appeared in the middle of some call would look like a descriptor that call leaked.
    explicit MountWatch(const char* labelFolder);

    // True after a change of either source, and whenever the table cannot be watched (no /proc). A
    // change made after this answer is reported by the next call. A forked child, or a process that
    // entered another mount namespace, watches its own table from its next call on (true then).
    bool Changed();

private:
    struct LabelFolderState {
        bool present = false;
        ino_t inode = 0;
        timespec modified{}, changed{};
        bool operator==(const LabelFolderState& other) const;
    };
    LabelFolderState LabelsNow() const;
    void Open();

    const char* labelFolder_;
    UniqueFd mountInfo_;
    pid_t owner_ = 0;         // a child shares its parent's descriptor and the mark on it
    ino_t mountSpace_ = 0;    // the mount namespace the descriptor shows
    LabelFolderState labels_;
};

}  // namespace vd::platform::fs
