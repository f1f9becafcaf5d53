// A database: one SQLite file holding tables of fields and records. Each table has a current record,
// which reads and writes of its fields go to; it is kept in the file, so it stays current for later
// commands and other processes until another record is made or chosen. Tables and fields are made
// on demand; the file itself only on the first write. Several Database objects, in one process or
// in several, can share a file.
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

    // The field's value in the given record; nullopt when there is no such field. A record the
    // table does not have reads as empty.
    std::optional<FMX_Data> read(std::string_view table, std::string_view field, int64_t record) const;

    // Every field, in the order the fields were made.
    std::vector<FieldInfo> fields() const;

    // The table's records, by id in the order they were made.
    std::vector<int64_t> records(std::string_view table) const;

    // The record reads and writes of the table go to: the focused one (see RecordFocus), else the
    // one last made or chosen, else the first.
    int64_t currentRecord(std::string_view table) const;

    // Makes a record (making the file and table as needed) and makes it current; answers its id,
    // one past the table's last.
    int64_t newRecord(std::string_view table);

    // Makes a record of the table current; a DatabaseError, changing nothing, when there is none
    // with that id.
    void goToRecord(std::string_view table, int64_t record);

    // For its lifetime, this Database's reads and writes of the table go to the record, whatever
    // is current in the file, which is left as it is; a record made or chosen meanwhile moves the
    // focus with it. Throws DatabaseError when the table has no such record. Nests.
    class RecordFocus {
    public:
        RecordFocus(Database& database, std::string_view table, int64_t record);
        ~RecordFocus();
        RecordFocus(const RecordFocus&) = delete;
        RecordFocus& operator=(const RecordFocus&) = delete;

    private:
        Database& database_;
        std::string table_;
        std::optional<int64_t> previous_;
    };

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
    int64_t currentRecordOn(Connection& c, std::string_view table) const;
    bool hasCurrentRecordsOn(Connection& c) const;
    std::optional<int64_t> focusedRecord(std::string_view table) const;
    void setFocus(std::string_view table, std::optional<int64_t> record);
    // Records record as current in the file and in any focus on the table. In a transaction.
    void makeCurrent(Connection& c, int64_t tableId, std::string_view table, int64_t record);
    Connection& connectionForWriting(const FMX_Data* firstValue, std::string_view table,
                                     std::string_view field);

    std::filesystem::path path_;      // as given, for messages
    std::filesystem::path location_;  // absolute, so a later change of folder does not matter
    std::string name_;
    mutable std::unique_ptr<Connection> connection_;
    bool inStatement_ = false;
    mutable std::unique_ptr<Transaction> statementTransaction_;  // once the statement's lock is held
    mutable bool knownToHaveCurrentRecords_ = false;  // once seen, the table stays
    std::vector<std::pair<std::string, std::optional<int64_t>>> focus_;  // by table; nullopt: none
};

}  // namespace vdhost::db
