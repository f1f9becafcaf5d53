// Whether the image library can load a file, and the picture's size, read from its header alone.
#pragma once

#include "util/status_codes.h"

#include <cstdint>
#include <string>

namespace vd::platform {

// 0 with the size; util::kNoCodec when no loader takes the file; util::kNoComponent when the
// library cannot be started; the loader's status when the header is damaged.
util::Status ImageFileSize(const std::string& path, int32_t& width, int32_t& height);

}  // namespace vd::platform
