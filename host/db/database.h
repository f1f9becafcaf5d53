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
class Transaction;

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

    // Makes the field with the given kind; nothing to do if it exists with that kind. A field of
    // another kind changes kind while it holds no data (no record has a value in it); one that
    // holds data is refused with a DatabaseError.
    void define(std::string_view table, std::string_view field, FieldKind kind);

    // Every field, in the order the fields were made.
    std::vector<FieldInfo> fields() const;

    // Makes a statement's reads and writes one write transaction, so that what it read cannot
    // change before it stores (two processes adding 1 to a field add 2). The write lock is taken,
    // waiting for other writers, at the statement's first use of the database, which makes a
    // missing file; nothing the statement wrote is kept unless commit() is called. One at a time.
    class Statement {
    public:
        explicit Statement(Database& database);
        ~Statement();
        Statement(const Statement&) = delete;
        Statement& operator=(const Statement&) = delete;

        void commit();

    private:
        Database& database_;
    };

private:
    // The connection for a read: in a statement, the one holding the write lock.
    Connection* connectionForReading() const;
    // In a statement whose lock is not yet taken, takes it on c.
    void lockForStatement(Connection& c) const;

    Connection* connection() const;  // nullptr while there is no file
    Connection& connectionForWriting(const FMX_Data* firstValue, std::string_view table,
                                     std::string_view field);

    std::filesystem::path path_;      // as given, for messages
    std::filesystem::path location_;  // absolute, so a later change of folder does not matter
    std::string name_;
    mutable std::unique_ptr<Connection> connection_;
    bool inStatement_ = false;
    mutable std::unique_ptr<Transaction> statementTransaction_;  // once the statement's lock is held
};

}  // namespace vdhost::db
