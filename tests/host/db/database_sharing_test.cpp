// Several users of one file, in this process and in others: each sees the others' writes, and
// writers wait for each other instead of failing.
#include "temp_folder.h"

#include <db/database.h>

#include <api/values.h>

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include <sys/wait.h>
#include <unistd.h>

namespace vdhost::db {
namespace {

class DatabaseSharing : public testing::TempFolderTest {
protected:
    // Runs body in a child process and answers its exit status: 0 when body returned true. The
    // child makes its own Database objects; SQLite connections must not cross a fork, so the
    // parent has none open when it forks.
    template <typename Body>
    static pid_t spawn(Body body) {
        pid_t pid = fork();
        if (pid == 0) {
            int status = 1;
            try {
                status = body() ? 0 : 2;
            } catch (const std::exception& e) {
                fprintf(stderr, "child: %s\n", e.what());
                status = 3;
            }
            _exit(status);
        }
        return pid;
    }
    static int exitStatus(pid_t pid) {
        int status = 0;
        if (waitpid(pid, &status, 0) != pid) return -1;
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
};

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

TEST_F(DatabaseSharing, ConcurrentWritersInOtherProcessesAllSucceedAndAreSeen) {
    const auto path = file("busy.vddb");
    constexpr int kWriters = 3;
    constexpr int kWrites = 150;
    std::optional<Database> parent(std::in_place, path);  // not opened yet: the file does not exist
    std::vector<pid_t> children;
    // They all start on a missing file, so they also race to make it.
    for (int w = 0; w < kWriters; ++w) {
        children.push_back(spawn([&, w] {
            Database db(path);
            const std::string field = "W" + std::to_string(w);
            for (int i = 1; i <= kWrites; ++i) {
                db.write("Counters", field, makeNumber(i));
                db.write("Log", "Last", makeText(u"writer " + std::u16string(1, u'0' + w)));
                if (db.read("Counters", field)->number.value != i) return false;
            }
            return true;
        }));
    }
    for (pid_t child : children) EXPECT_EQ(exitStatus(child), 0);
    EXPECT_EQ(parent->read("Counters", "W0")->number.value, kWrites);
    parent.reset();

    // Once the last connection closes, every write is in the file itself, not only in a WAL beside
    // it. Writers that close at the same moment may each see another still open and leave the WAL
    // for later, so one more open and close stands for the next user of the file.
    { Database last(path); }
    std::filesystem::copy_file(path, file("copy.vddb"));
    Database db(file("copy.vddb"));
    for (int w = 0; w < kWriters; ++w)
        EXPECT_EQ(db.read("Counters", "W" + std::to_string(w))->number.value, kWrites);
    EXPECT_EQ(db.fields().size(), kWriters + 1u);
}

}  // namespace
}  // namespace vdhost::db
