#include "schema.h"


#include <string>

namespace vdhost::db {
namespace {

// Names compare ASCII case-insensitively; NOCASE on the name columns makes the unique indexes and
// the lookups agree with that. Ids grow with creation, which is the order fields are listed in.
constexpr const char* kSchemaSql = R"sql(
CREATE TABLE vd_meta (key TEXT PRIMARY KEY NOT NULL, value);
CREATE TABLE vd_tables (
    id INTEGER PRIMARY KEY,
    name TEXT NOT NULL UNIQUE COLLATE NOCASE);
CREATE TABLE vd_fields (
    id INTEGER PRIMARY KEY,
    table_id INTEGER NOT NULL REFERENCES vd_tables (id),
    name TEXT NOT NULL COLLATE NOCASE,
    kind TEXT NOT NULL CHECK (kind IN ('text', 'number', 'container')),
    UNIQUE (table_id, name));
CREATE TABLE vd_records (
    table_id INTEGER NOT NULL REFERENCES vd_tables (id),
    id INTEGER NOT NULL,
    PRIMARY KEY (table_id, id));
CREATE TABLE vd_values (
    field_id INTEGER NOT NULL REFERENCES vd_fields (id),
    record_id INTEGER NOT NULL,
    type INTEGER NOT NULL,
    value,
    PRIMARY KEY (field_id, record_id));
)sql";

// Kept apart from kSchemaSql: it is also what turns a version 1 file into a version 2 one.
constexpr const char* kCurrentRecordsSql = R"sql(
CREATE TABLE IF NOT EXISTS vd_current_records (
    table_id INTEGER PRIMARY KEY REFERENCES vd_tables (id),
    record_id INTEGER NOT NULL);
)sql";

// The first column of the first row a statement yields, or SQLite's message when it cannot run.
struct Answer {
    std::optional<std::string> text;  // nullopt: no row, or NULL
    int type = SQLITE_NULL;
    std::optional<std::string> error;
};

Answer queryOne(sqlite3* db, const char* sql) {
    Answer answer;
    sqlite3_stmt* raw = nullptr;
    int rc = sqlite3_prepare_v2(db, sql, -1, &raw, nullptr);
    StatementHandle statement(raw);
    if (rc == SQLITE_OK) rc = sqlite3_step(statement.get());
    if (rc == SQLITE_ROW) {
        answer.type = sqlite3_column_type(statement.get(), 0);
        if (auto text = sqlite3_column_text(statement.get(), 0))
            answer.text = reinterpret_cast<const char*>(text);
    } else if (rc != SQLITE_DONE) {
        answer.error = sqlite3_errmsg(db);
    }
    return answer;
}

}  // namespace

void createSchema(Connection& connection) {
    Transaction transaction(connection);
    const std::string applicationId = "PRAGMA application_id = " + std::to_string(kApplicationId);
    connection.exec(applicationId.c_str(), "Cannot create");
    connection.exec(kSchemaSql, "Cannot create");
    connection.exec(kCurrentRecordsSql, "Cannot create");
    auto insert = connection.prepare("INSERT INTO vd_meta (key, value) VALUES (?1, ?2)");
    Query(connection, insert.get())
        .bind(1, std::string_view("format"))
        .bind(2, std::string_view(kFormatName))
        .run();
    Query(connection, insert.get()).bind(1, std::string_view("version")).bind(2, kFormatVersion).run();
    transaction.commit();
}

bool hasCurrentRecords(Connection& connection) {
    Query find(connection, "SELECT 1 FROM sqlite_master WHERE type = 'table' AND name = 'vd_current_records'");
    return find.step();
}

void addCurrentRecords(Connection& connection) {
    connection.exec(kCurrentRecordsSql);
    Query(connection, "UPDATE vd_meta SET value = ?1 WHERE key = 'version' AND value < ?1")
        .bind(1, kFirstCurrentRecordsVersion)
        .run();
}

std::optional<std::string> whyNotOurs(Connection& connection) {
    sqlite3* db = connection.handle();
    Answer meta = queryOne(db, "SELECT 'yes' FROM sqlite_master WHERE type = 'table' AND name = 'vd_meta'");
    if (meta.error) return meta.error;
    if (!meta.text) return "it is an SQLite database without vdhost metadata";

    Answer format = queryOne(db, "SELECT value FROM vd_meta WHERE key = 'format'");
    if (format.error) return format.error;
    if (!format.text) return "its vdhost metadata names no format";
    if (*format.text != kFormatName)
        return "its format is \"" + *format.text + "\", not \"" + kFormatName + "\"";

    Answer version = queryOne(db, "SELECT value FROM vd_meta WHERE key = 'version'");
    if (version.error) return version.error;
    // An INTEGER column's text is its decimal digits, so stoll cannot fail on it.
    const int64_t number = version.type == SQLITE_INTEGER ? std::stoll(*version.text) : 0;
    if (number < 1) return "its format version is missing or not a positive whole number";
    if (number > kFormatVersion)
        return "it was made by a newer vdhost (database format version " + std::to_string(number) +
               "; this vdhost reads version " + std::to_string(kFormatVersion) + ")";
    return std::nullopt;
}

}  // namespace vdhost::db
