// The file itself: made by the first write only, refused and left untouched when it is not ours,
// a single file again once every user has closed it; and several users of it at once.
#include "temp_folder.h"

#include <db/database.h>

#include <gmock/gmock.h>

#include <db/sqlite.h>

#include <sys/stat.h>

namespace vdhost::db {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;

class DatabaseFile : public testing::TempFolderTest {
protected:
    // Everything a refused open must leave as it was: the bytes, the modification time, and the
    // folder (no journal or WAL files made beside the file).
    struct Snapshot {
        std::string bytes;
        timespec modified{};
        std::vector<std::string> folder;
    };
    Snapshot snapshot(const std::filesystem::path& path) const {
        struct stat st {};
        EXPECT_EQ(stat(path.c_str(), &st), 0);
        return {testing::readFile(path), st.st_mtim, listing()};
    }
    void expectUnchanged(const std::filesystem::path& path, const Snapshot& before) const {
        Snapshot after = snapshot(path);
        EXPECT_TRUE(after.bytes == before.bytes) << "the file's bytes changed";
        EXPECT_EQ(after.modified.tv_sec, before.modified.tv_sec);
        EXPECT_EQ(after.modified.tv_nsec, before.modified.tv_nsec);
        EXPECT_EQ(after.folder, before.folder);
    }

    // Runs every way in to the file and checks that each is refused with the given reason.
    void expectRefused(const std::filesystem::path& path, const std::string& reason) {
        const Snapshot before = snapshot(path);
        const std::string name = path.string();
        auto refusedWith = ::testing::ThrowsMessage<DatabaseError>(
            AllOf(HasSubstr("\"" + name + "\""), HasSubstr(reason), HasSubstr("left untouched")));
        EXPECT_THAT([&] { Database db(path); }, refusedWith);
        expectUnchanged(path, before);

        // A file that turns up after the Database was made is checked when it is first used.
        const std::filesystem::path later = file("later.vddb");
        Database db(later);
        std::filesystem::copy_file(path, later);
        const Snapshot laterBefore = snapshot(later);
        auto refusedLater = ::testing::ThrowsMessage<DatabaseError>(HasSubstr(reason));
        EXPECT_THAT([&] { db.read("T", "F"); }, refusedLater);
        EXPECT_THAT([&] { db.write("T", "F", makeText(u"x")); }, refusedLater);
        EXPECT_THAT([&] { db.define("T", "F", FieldKind::Text); }, refusedLater);
        EXPECT_THAT([&] { db.fields(); }, refusedLater);
        expectUnchanged(later, laterBefore);
        std::filesystem::remove(later);
    }

    // Makes or changes an SQLite file as another program would: a plain connection, no checks.
    static void makeSqliteFile(const std::filesystem::path& path, const char* sql) {
        Connection(path.string(), SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, path.string()).exec(sql);
    }

    // Changes our metadata behind vdhost's back, as a newer or a different program would.
    void patchMeta(const std::filesystem::path& path, const char* sql) {
        { Database(path).write("T", "F", makeText(u"x")); }
        makeSqliteFile(path, sql);
    }
};

TEST_F(DatabaseFile, IsMadeByTheFirstWriteOrDefinitionOnly) {
    const auto path = file("Untitled.vddb");
    Database db(path);
    EXPECT_EQ(db.path(), path);
    EXPECT_FALSE(db.read("T", "F"));
    EXPECT_TRUE(db.fields().empty());
    EXPECT_THROW(db.write("T", "F", makeNumber(NAN)), DatabaseError);  // a refused write makes nothing
    EXPECT_FALSE(db.exists());
    EXPECT_TRUE(listing().empty());

    db.write("T", "F", makeText(u"x"));
    EXPECT_TRUE(db.exists());
    EXPECT_EQ(utf8Of(*db.read("T", "F")), "x");

    Database defined(file("a.vddb"));
    defined.define("T", "F", FieldKind::Number);
    EXPECT_TRUE(defined.exists());
    EXPECT_EQ(defined.fields(), (std::vector<FieldInfo>{{"T", "F", FieldKind::Number}}));
}

// SQLite only folds its WAL back into the file when the last user closes it; a Database that is
// done does so itself, so a copy of the file made while others still use it is complete, and once
// every user has closed it the file is a single file again.
TEST_F(DatabaseFile, ClosedDatabaseLeavesItsWritesInTheFileItself) {
    const auto path = file("a.vddb");
    {
        Database stays(path);
        {
            Database writer(path);
            writer.write("T", "F", makeText(u"written"));
            EXPECT_TRUE(stays.read("T", "F"));
        }
        std::filesystem::copy_file(path, file("copy.vddb"));
    }
    auto copied = Database(file("copy.vddb")).read("t", "f");
    ASSERT_TRUE(copied);
    EXPECT_EQ(utf8Of(*copied), "written");
    EXPECT_EQ(listing(), (std::vector<std::string>{"a.vddb", "copy.vddb"}));
}

TEST_F(DatabaseFile, RelativePathIsInTheFolderCurrentWhenMade) {
    const auto previous = std::filesystem::current_path();
    std::filesystem::current_path(folder());
    Database db("Untitled.vddb");
    std::filesystem::current_path(previous);
    db.write("T", "F", makeText(u"x"));
    EXPECT_EQ(db.path(), "Untitled.vddb");
    EXPECT_TRUE(std::filesystem::exists(file("Untitled.vddb")));
}

TEST_F(DatabaseFile, FilesThatAreNotOursAreRefusedAndLeftUntouched) {
    std::string garbage = "This is a text file, not a database.\n";
    for (int i = 0; i < 300; ++i) garbage.push_back(static_cast<char>(i * 37));
    testing::writeFile(file("notes.vddb"), garbage);
    testing::writeFile(file("empty.vddb"), "");
    makeSqliteFile(file("foreign.db"), "CREATE TABLE people(name TEXT); INSERT INTO people VALUES ('Ann');");
    // Even one in WAL mode, whose readers would normally make side files.
    makeSqliteFile(file("wal.db"), "PRAGMA journal_mode=WAL; CREATE TABLE t(a); INSERT INTO t VALUES (1);");
    patchMeta(file("newer.vddb"), "UPDATE vd_meta SET value = 3 WHERE key = 'version'");
    patchMeta(file("other.vddb"), "UPDATE vd_meta SET value = 'ledger' WHERE key = 'format'");
    const std::pair<const char*, const char*> cases[] = {
        {"notes.vddb", "file is not a database"},
        {"empty.vddb", "empty"},
        {"foreign.db", "SQLite database without vdhost metadata"},
        {"wal.db", "without vdhost metadata"},
        {"newer.vddb", "newer vdhost (database format version 3; this vdhost reads version 2)"},
        {"other.vddb", "its format is \"ledger\""},
    };
    for (const auto& [name, reason] : cases) {
        SCOPED_TRACE(name);
        expectRefused(file(name), reason);
    }
}

TEST_F(DatabaseFile, AFolderOrAMissingFolderIsAClearError) {
    std::filesystem::create_directory(file("folder.vddb"));
    EXPECT_THAT([&] { Database db(file("folder.vddb")); },
                ::testing::ThrowsMessage<DatabaseError>(HasSubstr("not a regular file")));

    Database db(file("no/such/folder/a.vddb"));
    EXPECT_FALSE(db.read("T", "F"));
    EXPECT_THAT([&] { db.write("T", "F", makeText(u"x")); },
                ::testing::ThrowsMessage<DatabaseError>(HasSubstr("a.vddb")));
}

TEST_F(DatabaseFile, MalformedContainerInTheFileIsAnErrorNotACrash) {
    const auto path = file("a.vddb");
    {
        Database db(path);
        FMX_BinaryData binary;
        binary.streams.push_back({0x4A504547, testing::bytesOf("abc")});
        db.write("T", "Box", makeContainer(std::move(binary)));
    }
    makeSqliteFile(path, "UPDATE vd_values SET value = substr(value, 1, length(value) - 1)");
    Database db(path);
    EXPECT_THAT([&] { db.read("T", "Box"); },
                ::testing::ThrowsMessage<DatabaseError>(AllOf(HasSubstr("T::Box"), HasSubstr("Malformed"))));
}

// Several users of one file in this process; other processes are the vdhost sharing tests'.
using DatabaseSharing = testing::TempFolderTest;

TEST_F(DatabaseSharing, TwoDatabasesOnOneFileSeeEachOthersWrites) {
    Database a(file("shared.vddb"));
    Database b(file("shared.vddb"));
    a.write("T", "F", makeText(u"from a"));  // b was made before the file existed
    EXPECT_EQ(utf8Of(*b.read("T", "F")), "from a");
    b.write("T", "F", makeText(u"from b"));
    b.write("T", "G", makeNumber(2));
    EXPECT_EQ(utf8Of(*a.read("t", "f")), "from b");
    EXPECT_EQ(a.read("T", "G")->number.value, 2);
    EXPECT_EQ(a.fields().size(), 2u);

    // A kind fixed by one is fixed for the other.
    EXPECT_THROW(a.define("T", "G", FieldKind::Text), DatabaseError);
}

}  // namespace
}  // namespace vdhost::db
