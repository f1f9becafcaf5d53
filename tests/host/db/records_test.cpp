// A table's records: made, chosen, kept apart; the current one kept in the file; a focus that acts
// on one record without moving the current one; and files of the layout before records.
#include "temp_folder.h"

#include <db/database.h>
#include <db/sqlite.h>

#include <gmock/gmock.h>

namespace vdhost::db {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

std::string textIn(const Database& db, const char* table, const char* field) {
    auto value = db.read(table, field);
    return value ? utf8Of(*value) : "<no field>";
}

class Records : public testing::TempFolderTest {};

TEST_F(Records, EachRecordKeepsItsValuesAndTheCurrentOneIsKeptInTheFile) {
    Database db(file("r.vddb"));
    db.write("Photos", "Caption", makeText(u"first"));
    EXPECT_EQ(db.newRecord("Photos"), 2);
    EXPECT_EQ(textIn(db, "Photos", "Caption"), "") << "a new record starts empty";
    db.write("Photos", "Caption", makeText(u"second"));
    EXPECT_EQ(db.newRecord("PHOTOS"), 3);
    db.write("photos", "Caption", makeText(u"third"));
    EXPECT_EQ(db.newRecord("Other"), 1) << "record ids count per table";

    EXPECT_THAT(db.records("Photos"), ElementsAre(1, 2, 3));
    EXPECT_EQ(utf8Of(*db.read("Photos", "Caption", 2)), "second");
    db.goToRecord("Photos", 1);
    EXPECT_EQ(textIn(db, "Photos", "Caption"), "first");
    EXPECT_THAT([&] { db.goToRecord("Missing", 1); }, ::testing::Throws<DatabaseError>());

    // Another user of the file, now or later, reads the record chosen last.
    Database other(file("r.vddb"));
    EXPECT_EQ(other.currentRecord("Photos"), 1);
    other.goToRecord("Photos", 3);
    EXPECT_EQ(textIn(db, "Photos", "Caption"), "third");

    // A record made or chosen in a statement that is not kept stays unmade, and the file usable.
    {
        Database::Statement statement(db);
        db.newRecord("Photos");
    }
    EXPECT_THAT(db.records("Photos"), ElementsAre(1, 2, 3));
    EXPECT_EQ(db.currentRecord("Photos"), 3);
}

TEST_F(Records, AFocusActsOnItsRecordAndLeavesTheCurrentOneAsItWas) {
    Database db(file("f.vddb"));
    db.write("T", "F", makeText(u"one"));
    db.newRecord("T");
    db.write("T", "F", makeText(u"two"));
    {
        Database::RecordFocus focus(db, "t", 1);
        EXPECT_EQ(textIn(db, "T", "F"), "one");
        db.write("T", "F", makeText(u"one, changed"));
        EXPECT_EQ(textIn(Database(file("f.vddb")), "T", "F"), "two") << "others still see the current record";
        // A record made meanwhile takes the focus with it.
        EXPECT_EQ(db.newRecord("T"), 3);
        db.write("T", "F", makeText(u"three"));
    }
    EXPECT_EQ(utf8Of(*db.read("T", "F", 1)), "one, changed");
    EXPECT_EQ(utf8Of(*db.read("T", "F", 3)), "three");
    EXPECT_EQ(db.currentRecord("T"), 3);
    EXPECT_THAT([&] { Database::RecordFocus focus(db, "T", 7); },
                ::testing::ThrowsMessage<DatabaseError>(HasSubstr("no record 7")));
    EXPECT_EQ(db.currentRecord("T"), 3);
}

// A file as vdhost wrote it before tables had more than one record: no vd_current_records, version 1.
class OldLayout : public testing::TempFolderTest {
protected:
    void SetUp() override {
        Connection c(path().string(), SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, "old");
        c.exec(R"sql(
PRAGMA application_id = 1447314498;
CREATE TABLE vd_meta (key TEXT PRIMARY KEY NOT NULL, value);
CREATE TABLE vd_tables (id INTEGER PRIMARY KEY, name TEXT NOT NULL UNIQUE COLLATE NOCASE);
CREATE TABLE vd_fields (id INTEGER PRIMARY KEY, table_id INTEGER NOT NULL REFERENCES vd_tables (id),
    name TEXT NOT NULL COLLATE NOCASE, kind TEXT NOT NULL CHECK (kind IN ('text', 'number', 'container')),
    UNIQUE (table_id, name));
CREATE TABLE vd_records (table_id INTEGER NOT NULL REFERENCES vd_tables (id), id INTEGER NOT NULL,
    PRIMARY KEY (table_id, id));
CREATE TABLE vd_values (field_id INTEGER NOT NULL REFERENCES vd_fields (id), record_id INTEGER NOT NULL,
    type INTEGER NOT NULL, value, PRIMARY KEY (field_id, record_id));
INSERT INTO vd_meta VALUES ('format', 'vdhost-database'), ('version', 1);
INSERT INTO vd_tables VALUES (1, 'Notes');
INSERT INTO vd_fields VALUES (1, 1, 'Body', 'text');
INSERT INTO vd_records VALUES (1, 1);
INSERT INTO vd_values VALUES (1, 1, 1, 'kept from before');
PRAGMA journal_mode = WAL;
)sql");
    }
    std::filesystem::path path() const { return file("old.vddb"); }
    int64_t version() const {
        Connection c(path().string(), SQLITE_OPEN_READONLY, "old");
        Query q(c, "SELECT value FROM vd_meta WHERE key = 'version'");
        return q.step() ? q.integer(0) : -1;
    }
};

TEST_F(OldLayout, OpensAsItIsAndTakesItsFirstOtherRecordOnDemand) {
    {
        Database db(path());
        EXPECT_EQ(textIn(db, "Notes", "Body"), "kept from before");
        db.write("Notes", "Body", makeText(u"changed"));
        EXPECT_THAT(db.records("Notes"), ElementsAre(1));
        EXPECT_THROW(db.goToRecord("Notes", 2), DatabaseError);
        {
            Database::Statement statement(db);
            db.newRecord("Notes");  // not committed: the file keeps its layout
        }
        EXPECT_EQ(textIn(db, "Notes", "Body"), "changed");
    }
    EXPECT_EQ(version(), 1) << "a file used as before stays readable by the vdhost that made it";

    Database db(path());
    EXPECT_EQ(db.newRecord("Notes"), 2);
    db.write("Notes", "Body", makeText(u"new"));
    db.goToRecord("Notes", 1);
    EXPECT_EQ(textIn(db, "Notes", "Body"), "changed");
    EXPECT_EQ(version(), 2);
}

}  // namespace
}  // namespace vdhost::db
