// A file being written under a temporary name in its target's folder, renamed into place only
// when complete: a failed or abandoned write leaves nothing behind, and a reader never sees half
// a file under the final name.
#pragma once

#include "platform/common/temporary_file_ledger.h"
#include "platform/media/errors.h"

#include <string>

namespace vd::media {

class PendingFile {
public:
    PendingFile() = default;
    ~PendingFile();  // removes the temporary file unless committed
    PendingFile(const PendingFile&) = delete;
    PendingFile& operator=(const PendingFile&) = delete;

    // Creates ".<name>.XXXXXX" (O_EXCL, mode 0644 less the umask) beside target.
    Status Create(const std::string& target);
    int Descriptor() const { return fd_; }
    const std::string& TemporaryPath() const { return temporary_; }

    // Writes all of the bytes at the current position.
    Status Write(const void* bytes, size_t size);
    // Writes at an offset without moving the position (header patches).
    Status WriteAt(const void* bytes, size_t size, int64_t offset);

    // Closes (checked: a full disk may only show here) and renames over the target.
    Status Commit();

private:
    int fd_ = -1;
    std::string temporary_;
    std::string target_;
    platform::TemporaryFileRecord record_;  // so that a stop signal or the next start removes it too
};

}  // namespace vd::media
