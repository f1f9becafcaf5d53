// A file updated in one step: a copy beside it (same folder, so the rename cannot cross file
// systems) is changed, flushed to the disk and renamed over the original. Until Commit succeeds the
// original stays byte for byte as it was, and the copy is removed whichever way the work ends.
#pragma once

#include "platform/common/temporary_file_ledger.h"
#include "util/status_codes.h"

#include <string>

namespace vd::platform::metadata {

class SiblingCopy {
public:
    SiblingCopy() = default;
    ~SiblingCopy();
    SiblingCopy(const SiblingCopy&) = delete;
    SiblingCopy& operator=(const SiblingCopy&) = delete;

    // Copies the regular file at original to a hidden name beside it that keeps its extension (the
    // tag libraries tell some kinds of file by it), with the original's permissions. The file
    // system's code when the folder cannot take a new file (-54, -46, -34 ...); -43 for no file,
    // -1302 for a folder.
    util::Status Make(const std::string& original);

    const std::string& Path() const { return copy_; }

    // Flushes the copy and its folder and renames it over the original.
    util::Status Commit();

private:
    std::string original_;
    std::string copy_;
    TemporaryFileRecord record_;  // so that a stop signal removes the copy too
};

}  // namespace vd::platform::metadata
