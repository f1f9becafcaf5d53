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
constexpr int64_t kFormatVersion = 2;
// Version 1 files are the same but for vd_current_records: every table's current record is its
// first. They are used as they are and stay version 1 (so older vdhosts keep using them) until a
// record is made or chosen, which adds the table and marks the file version 2.
constexpr int64_t kFirstCurrentRecordsVersion = 2;
// PRAGMA application_id of our files ("VDDB"), in the SQLite header at offset 68 (big-endian), so a
// file can be told apart before SQLite is ever pointed at it.
constexpr uint32_t kApplicationId = 0x56444442;

// The record a table's reads and writes go to until another is made or chosen.
constexpr int64_t kFirstRecord = 1;

// Creates the tables and the metadata in an empty database, inside one transaction.
void createSchema(Connection& connection);

// Whether the file has vd_current_records (a version 1 file may not).
bool hasCurrentRecords(Connection& connection);
// Adds vd_current_records to a version 1 file and marks it version 2. Call inside a transaction.
void addCurrentRecords(Connection& connection);

// Why the database behind connection is not one this vdhost may use (no metadata, another
// format, a newer version), or nullopt when it is.
std::optional<std::string> whyNotOurs(Connection& connection);

}  // namespace vdhost::db
