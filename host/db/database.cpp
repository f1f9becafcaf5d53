#include "database.h"

#include "container_blob.h"
#include "database_file.h"
#include "field_value.h"
#include "names.h"
#include "schema.h"
#include "sqlite.h"

#include <api/values.h>

namespace vdhost::db {
namespace fs = std::filesystem;

namespace {

constexpr const char* kReadSql =
    "SELECT f.kind, v.type, v.value FROM vd_fields f JOIN vd_tables t ON t.id = f.table_id "
    "LEFT JOIN vd_values v ON v.field_id = f.id AND v.record_id = ?3 "
    "WHERE t.name = ?1 AND f.name = ?2";
constexpr const char* kFindTableSql = "SELECT id FROM vd_tables WHERE name = ?1";
constexpr const char* kAddTableSql = "INSERT INTO vd_tables (name) VALUES (?1)";
constexpr const char* kFindFieldSql = "SELECT id, kind FROM vd_fields WHERE table_id = ?1 AND name = ?2";
constexpr const char* kAddFieldSql = "INSERT INTO vd_fields (table_id, name, kind) VALUES (?1, ?2, ?3)";
constexpr const char* kAddRecordSql = "INSERT OR IGNORE INTO vd_records (table_id, id) VALUES (?1, ?2)";
constexpr const char* kStoreValueSql =
    "INSERT INTO vd_values (field_id, record_id, type, value) VALUES (?1, ?2, ?3, ?4) "
    "ON CONFLICT (field_id, record_id) DO UPDATE SET type = excluded.type, value = excluded.value";
constexpr const char* kFieldHoldsDataSql =
    "SELECT 1 FROM vd_values WHERE field_id = ?1 AND value IS NOT NULL LIMIT 1";
constexpr const char* kClearFieldSql = "DELETE FROM vd_values WHERE field_id = ?1";
constexpr const char* kChangeKindSql = "UPDATE vd_fields SET kind = ?2 WHERE id = ?1";
constexpr const char* kCurrentRecordSql =
    "SELECT c.record_id FROM vd_current_records c JOIN vd_tables t ON t.id = c.table_id WHERE t.name = ?1";
constexpr const char* kSetCurrentRecordSql =
    "INSERT INTO vd_current_records (table_id, record_id) VALUES (?1, ?2) "
    "ON CONFLICT (table_id) DO UPDATE SET record_id = excluded.record_id";
constexpr const char* kLastRecordSql = "SELECT max(id) FROM vd_records WHERE table_id = ?1";
constexpr const char* kHasRecordSql = "SELECT 1 FROM vd_records WHERE table_id = ?1 AND id = ?2";
constexpr const char* kListRecordsSql =
    "SELECT r.id FROM vd_records r JOIN vd_tables t ON t.id = r.table_id WHERE t.name = ?1 ORDER BY r.id";
constexpr const char* kListFieldsSql =
    "SELECT t.name, f.name, f.kind FROM vd_fields f JOIN vd_tables t ON t.id = f.table_id ORDER BY f.id";

struct FieldRow {
    int64_t id;
    FieldKind kind;
};

FieldKind storedKind(std::string_view text, const std::string& name) {
    if (auto kind = parseKind(text)) return *kind;
    throw DatabaseError("\"" + name + "\" holds a field of unknown kind \"" + std::string(text) + "\"");
}

std::optional<int64_t> findTable(Connection& c, std::string_view table);

int64_t ensureTable(Connection& c, std::string_view table) {
    if (auto id = findTable(c, table)) return *id;
    Query(c, kAddTableSql).bind(1, table).run();
    return sqlite3_last_insert_rowid(c.handle());
}

std::optional<FieldRow> findField(Connection& c, int64_t tableId, std::string_view field) {
    Query find(c, kFindFieldSql);
    if (!find.bind(1, tableId).bind(2, field).step()) return std::nullopt;
    return FieldRow{find.integer(0), storedKind(find.text(1), c.name())};
}

FieldRow addField(Connection& c, int64_t tableId, std::string_view field, FieldKind kind) {
    Query(c, kAddFieldSql).bind(1, tableId).bind(2, field).bind(3, std::string_view(kindName(kind))).run();
    return {sqlite3_last_insert_rowid(c.handle()), kind};
}

std::optional<int64_t> findTable(Connection& c, std::string_view table) {
    Query find(c, kFindTableSql);
    if (find.bind(1, table).step()) return find.integer(0);
    return std::nullopt;
}

bool hasRecord(Connection& c, int64_t tableId, int64_t record) {
    return Query(c, kHasRecordSql).bind(1, tableId).bind(2, record).step();
}

DatabaseError noSuchRecord(std::string_view table, int64_t record) {
    return DatabaseError("Table " + std::string(table) + " has no record " + std::to_string(record));
}

void storeValue(Connection& c, int64_t fieldId, int64_t record, const StoredValue& stored) {
    Query store(c, kStoreValueSql);
    store.bind(1, fieldId).bind(2, record).bind(3, int64_t{stored.type});
    switch (stored.form) {
        case StoredValue::Form::Empty: store.bindNull(4); break;
        case StoredValue::Form::Text: store.bind(4, std::string_view(stored.text)); break;
        case StoredValue::Form::Number: store.bind(4, stored.number); break;
        case StoredValue::Form::Container: store.bind(4, std::span<const uint8_t>(stored.blob)); break;
    }
    store.run();
}

// The value in the columns (type, value) of a read, for a field of the given kind.
FMX_Data valueFromColumns(const Query& row, FieldKind kind, std::string_view table, std::string_view field,
                          const std::string& name) {
    const int form = row.columnType(2);
    if (form == SQLITE_NULL) return emptyValueOf(kind);
    auto wrongForm = [&] {
        return DatabaseError("Field " + qualifiedName(table, field) + " in \"" + name +
                             "\" holds a value that does not fit its kind (" + kindName(kind) + ")");
    };
    switch (kind) {
        case FieldKind::Text:
            if (form != SQLITE_TEXT) throw wrongForm();
            return textValue(row.text(2), static_cast<int32_t>(row.integer(1)));
        case FieldKind::Number:
            if (form != SQLITE_FLOAT && form != SQLITE_INTEGER) throw wrongForm();
            return makeNumber(row.real(2));
        case FieldKind::Container:
            if (form != SQLITE_BLOB) throw wrongForm();
            try {
                return decodeContainer(row.blob(2));
            } catch (const DatabaseError& e) {
                throw DatabaseError("Field " + qualifiedName(table, field) + " in \"" + name +
                                    "\": " + e.what());
            }
    }
    return emptyValueOf(kind);
}

}  // namespace

Database::Database(fs::path path)
    : path_(std::move(path)), location_(fs::absolute(path_)), name_(path_.string()) {
    if (fs::exists(location_)) inspectDatabaseFile(location_, name_);
}

Database::~Database() = default;
Database::Database(Database&&) noexcept = default;
Database& Database::operator=(Database&&) noexcept = default;

bool Database::exists() const {
    std::error_code ec;
    return fs::exists(location_, ec);
}

Connection* Database::connection() const {
    if (!connection_ && exists()) {
        inspectDatabaseFile(location_, name_);
        connection_ = openDatabaseFile(location_, name_);
    }
    return connection_.get();
}

Connection* Database::connectionForReading() const {
    if (!inStatement_) return connection();
    // The statement stores at its end: the file it will need anyway is made now, so that what it
    // reads is read under the lock.
    Connection& c = const_cast<Database*>(this)->connectionForWriting(nullptr, {}, {});
    lockForStatement(c);
    return &c;
}

void Database::lockForStatement(Connection& c) const {
    if (inStatement_ && !statementTransaction_) statementTransaction_ = std::make_unique<Transaction>(c);
}

Database::Statement::Statement(Database& database) : database_(database) {
    if (database_.inStatement_) throw DatabaseError("A statement of \"" + database_.name_ + "\" is already open");
    database_.inStatement_ = true;
}

Database::Statement::~Statement() {
    database_.statementTransaction_.reset();  // rolls back unless committed
    database_.inStatement_ = false;
}

void Database::Statement::commit() {
    if (database_.statementTransaction_) database_.statementTransaction_->commit();
    database_.statementTransaction_.reset();
}

Connection& Database::connectionForWriting(const FMX_Data* firstValue, std::string_view table,
                                           std::string_view field) {
    if (!connection_ && !exists()) {
        // A value the new field could not take must not leave a new file behind.
        if (firstValue) storedFormOf(*firstValue, kindForValue(*firstValue), table, field);
        createDatabaseFile(location_, name_);
    }
    Connection* c = connection();
    if (!c) throw DatabaseError("Cannot create \"" + name_ + "\": the file vanished as it was made");
    return *c;
}

std::optional<FMX_Data> Database::read(std::string_view table, std::string_view field) const {
    checkName(table, "table");
    checkName(field, "field");
    Connection* c = connectionForReading();
    if (!c) return std::nullopt;
    return read(table, field, currentRecordOn(*c, table));
}

std::optional<FMX_Data> Database::read(std::string_view table, std::string_view field, int64_t record) const {
    checkName(table, "table");
    checkName(field, "field");
    Connection* c = connectionForReading();
    if (!c) return std::nullopt;
    Query row(*c, kReadSql);
    if (!row.bind(1, table).bind(2, field).bind(3, record).step()) return std::nullopt;
    return valueFromColumns(row, storedKind(row.text(0), name_), table, field, name_);
}

void Database::write(std::string_view table, std::string_view field, const FMX_Data& value) {
    checkName(table, "table");
    checkName(field, "field");
    Connection& c = connectionForWriting(&value, table, field);
    lockForStatement(c);
    Transaction transaction(c);
    const int64_t tableId = ensureTable(c, table);
    auto row = findField(c, tableId, field);
    if (!row) row = addField(c, tableId, field, kindForValue(value));
    const StoredValue stored = storedFormOf(value, row->kind, table, field);
    const int64_t record = currentRecordOn(c, table);
    Query(c, kAddRecordSql).bind(1, tableId).bind(2, record).run();
    storeValue(c, row->id, record, stored);
    transaction.commit();
}

void Database::define(std::string_view table, std::string_view field, FieldKind kind) {
    checkName(table, "table");
    checkName(field, "field");
    Connection& c = connectionForWriting(nullptr, table, field);
    lockForStatement(c);
    Transaction transaction(c);
    const int64_t tableId = ensureTable(c, table);
    if (auto row = findField(c, tableId, field)) {
        if (row->kind == kind) return;  // the transaction rolls back: nothing was changed
        if (Query(c, kFieldHoldsDataSql).bind(1, row->id).step())
            throw DatabaseError("Field " + qualifiedName(table, field) + " is a " + kindName(row->kind) +
                                " field that holds data; it can become a " + kindName(kind) +
                                " field only once it is empty (store \"\" into it first)");
        // Only empty values are left; they would read back as empties of the old kind.
        Query(c, kClearFieldSql).bind(1, row->id).run();
        Query(c, kChangeKindSql).bind(1, row->id).bind(2, std::string_view(kindName(kind))).run();
    } else {
        addField(c, tableId, field, kind);
    }
    transaction.commit();
}

std::vector<FieldInfo> Database::fields() const {
    std::vector<FieldInfo> out;
    Connection* c = connectionForReading();
    if (!c) return out;
    Query list(*c, kListFieldsSql);
    while (list.step())
        out.push_back(
            {std::string(list.text(0)), std::string(list.text(1)), storedKind(list.text(2), name_)});
    return out;
}

std::vector<int64_t> Database::records(std::string_view table) const {
    checkName(table, "table");
    std::vector<int64_t> out;
    Connection* c = connectionForReading();
    if (!c) return out;
    Query list(*c, kListRecordsSql);
    list.bind(1, table);
    while (list.step()) out.push_back(list.integer(0));
    return out;
}

bool Database::hasCurrentRecordsOn(Connection& c) const {
    if (knownToHaveCurrentRecords_) return true;
    const bool has = hasCurrentRecords(c);
    // Inside a transaction the table may be our own uncommitted addition, which a rollback undoes.
    if (has && sqlite3_get_autocommit(c.handle())) knownToHaveCurrentRecords_ = true;
    return has;
}

int64_t Database::currentRecordOn(Connection& c, std::string_view table) const {
    if (auto focused = focusedRecord(table)) return *focused;
    if (!hasCurrentRecordsOn(c)) return kFirstRecord;
    Query current(c, kCurrentRecordSql);
    return current.bind(1, table).step() ? current.integer(0) : kFirstRecord;
}

int64_t Database::currentRecord(std::string_view table) const {
    checkName(table, "table");
    if (auto focused = focusedRecord(table)) return *focused;
    Connection* c = connectionForReading();
    return c ? currentRecordOn(*c, table) : kFirstRecord;
}

void Database::makeCurrent(Connection& c, int64_t tableId, std::string_view table, int64_t record) {
    if (!hasCurrentRecordsOn(c)) addCurrentRecords(c);
    Query(c, kSetCurrentRecordSql).bind(1, tableId).bind(2, record).run();
    if (focusedRecord(table)) setFocus(table, record);
}

int64_t Database::newRecord(std::string_view table) {
    checkName(table, "table");
    Connection& c = connectionForWriting(nullptr, table, {});
    lockForStatement(c);
    Transaction transaction(c);
    const int64_t tableId = ensureTable(c, table);
    Query last(c, kLastRecordSql);
    last.bind(1, tableId).step();
    const int64_t record = last.columnType(0) == SQLITE_NULL ? kFirstRecord : last.integer(0) + 1;
    Query(c, kAddRecordSql).bind(1, tableId).bind(2, record).run();
    const std::optional<int64_t> focusBefore = focusedRecord(table);
    makeCurrent(c, tableId, table, record);
    try {
        transaction.commit();
    } catch (...) {
        setFocus(table, focusBefore);
        throw;
    }
    return record;
}

void Database::goToRecord(std::string_view table, int64_t record) {
    checkName(table, "table");
    Connection* c = connectionForReading();
    if (!c) throw noSuchRecord(table, record);
    lockForStatement(*c);
    Transaction transaction(*c);
    const auto tableId = findTable(*c, table);
    if (!tableId || !hasRecord(*c, *tableId, record)) throw noSuchRecord(table, record);
    const std::optional<int64_t> focusBefore = focusedRecord(table);
    makeCurrent(*c, *tableId, table, record);
    try {
        transaction.commit();
    } catch (...) {
        setFocus(table, focusBefore);
        throw;
    }
}

std::optional<int64_t> Database::focusedRecord(std::string_view table) const {
    for (const auto& [name, record] : focus_)
        if (sameName(name, table)) return record;
    return std::nullopt;
}

void Database::setFocus(std::string_view table, std::optional<int64_t> record) {
    for (auto& [name, focused] : focus_)
        if (sameName(name, table)) {
            focused = record;
            return;
        }
    focus_.emplace_back(std::string(table), record);
}

Database::RecordFocus::RecordFocus(Database& database, std::string_view table, int64_t record)
    : database_(database), table_(table), previous_(database.focusedRecord(table)) {
    checkName(table, "table");
    Connection* c = database_.connectionForReading();
    const auto tableId = c ? findTable(*c, table) : std::nullopt;
    if (!tableId || !hasRecord(*c, *tableId, record)) throw noSuchRecord(table, record);
    database_.setFocus(table_, record);
}

Database::RecordFocus::~RecordFocus() { database_.setFocus(table_, previous_); }

}  // namespace vdhost::db
