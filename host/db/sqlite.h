// Owning wrappers around SQLite connections and statements. Every failure becomes a DatabaseError
// whose message names the file, so callers never see an SQLite result code.
#pragma once

#include <sqlite3.h>

#include <cstdint>
#include <filesystem>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>

namespace vdhost::db {

// Out of line, so code using these wrappers needs only this library, not SQLite itself.
struct ConnectionCloser {
    void operator()(sqlite3* db) const;
};
struct StatementFinalizer {
    void operator()(sqlite3_stmt* statement) const;
};
using ConnectionHandle = std::unique_ptr<sqlite3, ConnectionCloser>;
using StatementHandle = std::unique_ptr<sqlite3_stmt, StatementFinalizer>;

class Connection {
public:
    // flags as for sqlite3_open_v2. name is the file as the user knows it, for messages.
    Connection(const std::string& filename, int flags, std::string name);
    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    // Before closing, copy what this or any other connection committed to the WAL into the file
    // itself, so the file alone holds every write even when another user still has it open and
    // so keeps SQLite from removing the WAL.
    void checkpointWhenClosed() { checkpointWhenClosed_ = true; }

    sqlite3* handle() const { return db_.get(); }
    const std::string& name() const { return name_; }

    // Runs sql; on failure throws fail(doing).
    void exec(const char* sql, std::string_view doing = "Cannot use");
    // The statement for sql, prepared once per connection. sql must be a string literal: the
    // cache is keyed by its address.
    sqlite3_stmt* cached(const char* sql);
    StatementHandle prepare(std::string_view sql, unsigned prepareFlags = 0);

    // Throws a DatabaseError "<doing> "<file>": <SQLite's message>".
    [[noreturn]] void fail(std::string_view doing) const;

private:
    std::string name_;
    bool checkpointWhenClosed_ = false;
    ConnectionHandle db_;
    // Declared after db_ so the statements are finalized before the connection closes.
    std::unordered_map<const char*, StatementHandle> statements_;
};

// One use of a prepared statement: bind, step, read columns. The statement is reset and its
// bindings cleared when the Query ends, so no read transaction stays open behind a cached
// statement. Bound texts and blobs are not copied: they must outlive the Query.
class Query {
public:
    Query(Connection& connection, sqlite3_stmt* statement);
    Query(Connection& connection, const char* cachedSql);
    ~Query();
    Query(const Query&) = delete;
    Query& operator=(const Query&) = delete;

    Query& bind(int index, std::string_view text);
    Query& bind(int index, double value);
    Query& bind(int index, int64_t value);
    Query& bind(int index, std::span<const uint8_t> blob);
    Query& bindNull(int index);

    // True while there is a row; false when done. Throws on errors.
    bool step();
    void run();  // steps a statement that yields no rows

    int columnType(int column) const;
    int64_t integer(int column) const;
    double real(int column) const;
    std::string_view text(int column) const;
    std::span<const uint8_t> blob(int column) const;

private:
    void check(int rc);

    Connection& connection_;
    sqlite3_stmt* statement_;
};

// BEGIN IMMEDIATE on construction: the write lock is taken up front, so two writers queue on the
// busy timeout instead of failing when one of them tries to upgrade a read lock. Inside a
// transaction that is already open it is a savepoint, so a write within a larger statement is
// still all or nothing. Rolls back unless commit() was called.
class Transaction {
public:
    explicit Transaction(Connection& connection);
    ~Transaction();
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;

    void commit();

private:
    Connection& connection_;
    bool nested_;
    bool open_ = true;
};

}  // namespace vdhost::db
