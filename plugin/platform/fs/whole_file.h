// Files read and written whole: a file's bytes read at once within a bound, and a file written
// under a hidden name in its target's folder, with its resource fork, and put in place under the
// target's name only when complete, so that a failed write never leaves half a file and never
// touches a file that was already there.
#pragma once

#include "util/status_codes.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace vd::platform::fs {

// The file's bytes. -108 for a file larger than limit (nothing is read), -1302 for a folder, the
// file system's code otherwise.
util::Status ReadWholeFile(const std::string& path, std::vector<uint8_t>& bytes, uint64_t limit);

enum class WriteStep {
    kCreating,      // the file could not be made in the target's folder
    kWriting,       // its bytes could not all be written (or the close said so)
    kResourceFork,  // the resource fork attribute was refused
    kReplacing,     // the finished file could not take the target's name
};

struct WholeFile {
    const uint8_t* data = nullptr;
    size_t size = 0;
    const std::vector<uint8_t>* resourceFork = nullptr;  // none: the file gets no fork
};

// Writes the file at target (absolute; its folder exists). An existing file of that name is
// replaced only when replace is set (else -48, and it is left as it was); it stays untouched
// whenever the write fails. On failure step says which step failed and nothing of the new file
// is left behind.
util::Status WriteWholeFile(const std::string& target, const WholeFile& file, bool replace, WriteStep& step);

}  // namespace vd::platform::fs
