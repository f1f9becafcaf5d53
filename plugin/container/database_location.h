// Where the current database lives, asked of the host, and files named relative to it. References
// written into container fields are relative to the database's folder when the database is a local
// file, and absolute when it is hosted over the network.
#pragma once

#include "util/file_location.h"

#include <optional>
#include <string>
#include <string_view>

namespace vd::container {

// The host's answer to "Get(FilePath)", at most 4096 bytes of UTF-8; nothing when the evaluation
// fails.
std::optional<std::string> DatabasePath();

// True when a database path names a network-hosted database: longer than 4 characters and beginning
// with "fmnet" (case-sensitive).
bool IsRemoteDatabasePath(std::string_view path);

enum : int { kLocalDatabase = 0, kRemoteDatabase = 1 };

// kRemoteDatabase; kLocalDatabase with folder set to the database's folder; or an error code
// (-108 when the host gives no path, else the path resolver's code).
int DatabaseLocation(std::string& folder);

// A file named by a reference text: relative to the database's folder for a local database, as a
// complete path for a remote one. 0 or an error code; location is complete only on 0.
int ResolveAgainstDatabase(std::string_view text, util::FileLocation& location);

}  // namespace vd::container
