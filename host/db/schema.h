// The tables of a database file and the metadata that marks the file as ours. docs/database.md
// describes them for people reading a file with other SQLite tools.
#pragma once

#include "sqlite.h"

#include <cstdint>
#include <optional>
#include <string>

namespace vdhost::db {

constexpr const char* kFormatName = "vdhost-database";
// Raised whenever a change to the tables or the container layout would mislead an older vdhost;
// such a vdhost refuses the file instead of writing into it.
constexpr int64_t kFormatVersion = 1;
// PRAGMA application_id of our files ("VDDB"), in the SQLite header at offset 68 (big-endian), so a
// file can be told apart before SQLite is ever pointed at it.
constexpr uint32_t kApplicationId = 0x56444442;

// The record every table has for now. Values are keyed by record id so more can follow.
constexpr int64_t kCurrentRecord = 1;

// Creates the tables and the metadata in an empty database, inside one transaction.
void createSchema(Connection& connection);

// Why the database behind connection is not one this vdhost may use (no metadata, another
// format, a newer version), or nullopt when it is.
std::optional<std::string> whyNotOurs(Connection& connection);

}  // namespace vdhost::db
