// The status codes that paths, settings texts and time texts answer with. They are the file-system
// and memory codes users already know from the message table, so a failure reads the same whichever
// layer found it.
#pragma once

#include <cstdint>

namespace vd::util {

using Status = int16_t;

inline constexpr Status kNoError = 0;
inline constexpr Status kIoError = -36;           // the file system failed in a way we cannot name
inline constexpr Status kNoSuchVolume = -35;      // volume, drive or network share not mounted
inline constexpr Status kBadName = -37;           // a name or path too long for the file system
inline constexpr Status kFileNotFound = -43;      // even the folder that should hold the item is missing
inline constexpr Status kBadParameter = -50;      // missing or malformed text
inline constexpr Status kPermissionDenied = -54;  // a folder on the way may not be searched
inline constexpr Status kMemoryFull = -108;
inline constexpr Status kDiskFull = -34;
inline constexpr Status kDiskLocked = -46;         // a read-only file system
inline constexpr Status kFileBusy = -47;
inline constexpr Status kAlreadyExists = -48;
inline constexpr Status kUserCancelled = -128;
inline constexpr Status kNotAFile = -1302;         // a folder where a file was expected
inline constexpr Status kFolderNotFound = -120;   // base folder missing, or ".." climbs above it
inline constexpr Status kNotAFolder = -1407;      // the item that should hold the target is a file

}  // namespace vd::util
