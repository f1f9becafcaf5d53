// Removing one file, as the sound functions remove their temporary files.
#pragma once

#include "platform/media/errors.h"

#include <string>

namespace vd::sound {

// 0; -1302 for a folder (never removed here); -43 when there is nothing; the file system's refusal
// otherwise (-54, -36).
media::Status DeleteFile(const std::string& path);

}  // namespace vd::sound
