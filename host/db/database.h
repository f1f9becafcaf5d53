// A database: one SQLite file holding tables of fields, each table with one current record for
// now. Tables and fields are made on demand; the file itself only on the first write. Several
// Database objects, in one process or in several, can share a file.
//
// A Database is not safe to use from two threads at once.
#pragma once

#include "database_error.h"
#include "field_kind.h"

#include <api/objects.h>

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vdhost::db {

class Connection;

class Database {
public:
    // Checks an existing file and throws DatabaseError, leaving the file untouched, when it is not
    // one of ours. A missing file is fine: it is made by the first write. Never creates anything.
    explicit Database(std::filesystem::path path);
    ~Database();
    Database(Database&&) noexcept;
    Database& operator=(Database&&) noexcept;

    const std::filesystem::path& path() const { return path_; }
    bool exists() const;  // has the file been made (by us or by another process)?

    // The field's value in the current record; nullopt when there is no such field (or no file).
    // Names match ASCII case-insensitively.
    std::optional<FMX_Data> read(std::string_view table, std::string_view field) const;

    // Stores value in the field of the current record, making the file, table, field and record as
    // needed; a new field takes its kind from the value. All or nothing: on a DatabaseError the
    // database is as it was.
    void write(std::string_view table, std::string_view field, const FMX_Data& value);

    // Makes the field with the given kind; nothing to do if it exists with that kind, an error if
    // it exists with another.
    void define(std::string_view table, std::string_view field, FieldKind kind);

    // Every field, in the order the fields were made.
    std::vector<FieldInfo> fields() const;

private:
    Connection* connection() const;  // nullptr while there is no file
    Connection& connectionForWriting(const FMX_Data* firstValue, std::string_view table,
                                     std::string_view field);

    std::filesystem::path path_;      // as given, for messages
    std::filesystem::path location_;  // absolute, so a later change of folder does not matter
    std::string name_;
    mutable std::unique_ptr<Connection> connection_;
};

}  // namespace vdhost::db
