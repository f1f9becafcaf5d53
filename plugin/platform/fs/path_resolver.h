// One entry for every path form a user or the host may hand the plug-in: POSIX paths,
// "/Volumes/Name/...", "~/...", Windows drive and network paths, the host's reference texts
// ("imagemac:/...", "file:./a.wav") and paths relative to the database's folder.
#pragma once

#include <string>
#include <string_view>

#include "util/file_location.h"
#include "util/status_codes.h"

namespace vd::util {

// Resolves the text into the record. relativeFlag allows paths relative to baseFolder (the database's
// folder for references the host wrote); without it, or without a base folder, they answer -120.
// Codes: -50 no text (or a text with a NUL byte), -108 memory or no home folder for "~/", -35 no
// such volume, drive or share, -120 a base folder missing or ".." above the root in a relative
// path, -43 even the folder
// that should hold the target is missing, -1407 that folder is a file, and the file system's own
// refusals (-54 a folder that may not be searched, -37 a name too long). The record is complete
// only when the answer is 0.
Status ResolvePath(FileLocation& location, std::string_view text, bool relativeFlag,
                   const std::string& baseFolder) noexcept;

}  // namespace vd::util
