// Finding out whether a file is one of our databases, making a new one, and opening one. A file
// that is not ours is only ever read: its header with plain reads, then, if it claims to be ours,
// through an immutable read-only SQLite connection, which takes no locks and writes no side files.
#pragma once

#include "sqlite.h"

#include <filesystem>
#include <memory>
#include <string>

namespace vdhost::db {

// Throws DatabaseError "<name> is not a vdhost database: <reason>. It was left untouched." unless
// the existing file at location is a database this vdhost may read and write.
void inspectDatabaseFile(const std::filesystem::path& location, const std::string& name);

// Makes a new database at location. The file is built under a temporary name and linked into place
// only when complete, so no other process ever sees it half made, and an existing file, even one
// that appeared meanwhile, is never replaced. Returns false when a file was already there.
bool createDatabaseFile(const std::filesystem::path& location, const std::string& name);

// Opens an inspected database for reading and writing, configured for sharing with other
// processes (busy timeout, WAL with NORMAL sync).
std::unique_ptr<Connection> openDatabaseFile(const std::filesystem::path& location, const std::string& name);

}  // namespace vdhost::db
