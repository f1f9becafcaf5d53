// The file-system codes that item operations answer beyond those every path answers
// (util/status_codes.h). They are the codes users already know from the message table.
#pragma once

#include "util/status_codes.h"

namespace vd::platform::fs {

inline constexpr util::Status kDiskFull = -34;
inline constexpr util::Status kDiskLocked = -46;         // a read-only file system
inline constexpr util::Status kFileBusy = -47;
inline constexpr util::Status kAlreadyExists = -48;
inline constexpr util::Status kUserCancelled = -128;
inline constexpr util::Status kNotAFile = -1302;          // a folder where a file was expected

}  // namespace vd::platform::fs
