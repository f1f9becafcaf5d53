#include "sqlite.h"

#include "database_error.h"

namespace vdhost::db {

void ConnectionCloser::operator()(sqlite3* db) const { sqlite3_close_v2(db); }
void StatementFinalizer::operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }

Connection::Connection(const std::string& filename, int flags, std::string name) : name_(std::move(name)) {
    sqlite3* raw = nullptr;
    int rc = sqlite3_open_v2(filename.c_str(), &raw, flags, nullptr);
    db_.reset(raw);  // sqlite3_open_v2 may hand back a handle even when it fails
    if (rc != SQLITE_OK) {
        if (!db_) throw DatabaseError("Cannot open \"" + name_ + "\": out of memory");
        fail("Cannot open");
    }
}

Connection::~Connection() {
    // PASSIVE never waits: it copies what no reader still needs and leaves the rest to others.
    if (checkpointWhenClosed_)
        sqlite3_wal_checkpoint_v2(db_.get(), nullptr, SQLITE_CHECKPOINT_PASSIVE, nullptr, nullptr);
}

void Connection::exec(const char* sql, std::string_view doing) {
    if (sqlite3_exec(db_.get(), sql, nullptr, nullptr, nullptr) != SQLITE_OK) fail(doing);
}

sqlite3_stmt* Connection::cached(const char* sql) {
    auto it = statements_.find(sql);
    if (it != statements_.end()) return it->second.get();
    return statements_.emplace(sql, prepare(sql, SQLITE_PREPARE_PERSISTENT)).first->second.get();
}

StatementHandle Connection::prepare(std::string_view sql, unsigned prepareFlags) {
    sqlite3_stmt* raw = nullptr;
    int rc =
        sqlite3_prepare_v3(db_.get(), sql.data(), static_cast<int>(sql.size()), prepareFlags, &raw, nullptr);
    StatementHandle statement(raw);
    if (rc != SQLITE_OK) fail("Cannot use");
    return statement;
}

void Connection::fail(std::string_view doing) const {
    std::string message(doing);
    message += " \"" + name_ + "\": ";
    message += db_ ? sqlite3_errmsg(db_.get()) : "unknown error";
    throw DatabaseError(message);
}

Query::Query(Connection& connection, sqlite3_stmt* statement)
    : connection_(connection), statement_(statement) {}

Query::Query(Connection& connection, const char* cachedSql)
    : Query(connection, connection.cached(cachedSql)) {}

Query::~Query() {
    sqlite3_reset(statement_);
    sqlite3_clear_bindings(statement_);
}

void Query::check(int rc) {
    if (rc != SQLITE_OK) connection_.fail("Cannot use");
}

Query& Query::bind(int index, std::string_view text) {
    // A null data pointer would bind NULL instead of an empty text.
    check(sqlite3_bind_text64(statement_, index, text.empty() ? "" : text.data(), text.size(), SQLITE_STATIC,
                              SQLITE_UTF8));
    return *this;
}

Query& Query::bind(int index, double value) {
    check(sqlite3_bind_double(statement_, index, value));
    return *this;
}

Query& Query::bind(int index, int64_t value) {
    check(sqlite3_bind_int64(statement_, index, value));
    return *this;
}

Query& Query::bind(int index, std::span<const uint8_t> blob) {
    static const uint8_t kNothing = 0;
    check(sqlite3_bind_blob64(statement_, index, blob.empty() ? &kNothing : blob.data(), blob.size(),
                              SQLITE_STATIC));
    return *this;
}

Query& Query::bindNull(int index) {
    check(sqlite3_bind_null(statement_, index));
    return *this;
}

bool Query::step() {
    int rc = sqlite3_step(statement_);
    if (rc == SQLITE_ROW) return true;
    if (rc == SQLITE_DONE) return false;
    connection_.fail("Cannot use");
}

void Query::run() {
    while (step()) {
    }
}

int Query::columnType(int column) const { return sqlite3_column_type(statement_, column); }
int64_t Query::integer(int column) const { return sqlite3_column_int64(statement_, column); }
double Query::real(int column) const { return sqlite3_column_double(statement_, column); }

std::string_view Query::text(int column) const {
    auto data = reinterpret_cast<const char*>(sqlite3_column_text(statement_, column));
    return data ? std::string_view(data, static_cast<size_t>(sqlite3_column_bytes(statement_, column)))
                : std::string_view();
}

std::span<const uint8_t> Query::blob(int column) const {
    auto data = static_cast<const uint8_t*>(sqlite3_column_blob(statement_, column));
    return data
               ? std::span<const uint8_t>(data, static_cast<size_t>(sqlite3_column_bytes(statement_, column)))
               : std::span<const uint8_t>();
}

Transaction::Transaction(Connection& connection)
    : connection_(connection), nested_(sqlite3_get_autocommit(connection.handle()) == 0) {
    connection_.exec(nested_ ? "SAVEPOINT vd_nested" : "BEGIN IMMEDIATE", "Cannot write to");
}

Transaction::~Transaction() {
    if (!open_) return;
    const char* undo = nested_ ? "ROLLBACK TO vd_nested; RELEASE vd_nested" : "ROLLBACK";
    sqlite3_exec(connection_.handle(), undo, nullptr, nullptr, nullptr);
}

void Transaction::commit() {
    connection_.exec(nested_ ? "RELEASE vd_nested" : "COMMIT", "Cannot write to");
    open_ = false;
}

}  // namespace vdhost::db
