#include "platform/fs/tree_delete.h"

#include <support/temp_folder.h>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;
using vdtest::TempFolder;

constexpr uid_t kNobody = 65534;

mode_t ModeOf(const fs::path& path) {
    struct stat info {};
    return ::lstat(path.c_str(), &info) == 0 ? info.st_mode & 07777 : 0;
}

// The delete runs as a user who owns the outer folders, locked, but not the innermost one, so it
// unlocks its way in and then fails there. Only root can set that up.
TEST(TreeDelete, AFailedDeletePutsBackThePermissionsItOpenedUp) {
    if (::geteuid() != 0) GTEST_SKIP() << "needs a folder of another user";
    TempFolder root;
    ASSERT_EQ(::chmod(root.path().c_str(), 0755), 0);
    const fs::path tree = root / "tree";
    fs::create_directories(tree / "deep" / "not theirs");
    vdtest::writeFile(tree / "deep" / "not theirs" / "file", "x");
    ASSERT_EQ(::chown(tree.c_str(), kNobody, kNobody), 0);
    ASSERT_EQ(::chown((tree / "deep").c_str(), kNobody, kNobody), 0);
    ASSERT_EQ(::chmod((tree / "deep").c_str(), 0500), 0);
    ASSERT_EQ(::chmod(tree.c_str(), 0555), 0);

    const pid_t child = ::fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        if (::setresgid(kNobody, kNobody, kNobody) != 0 || ::setresuid(kNobody, kNobody, kNobody) != 0) ::_exit(2);
        ::_exit(vd::platform::fs::DeleteItemTree(tree.string()) == vd::util::kPermissionDenied ? 0 : 1);
    }
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 0) << "the delete should have failed with -54 inside the folder it does not own";

    EXPECT_EQ(ModeOf(tree), 0555u);
    EXPECT_EQ(ModeOf(tree / "deep"), 0500u);
    EXPECT_EQ(ModeOf(tree / "deep" / "not theirs"), 0755u);
    EXPECT_TRUE(fs::exists(tree / "deep" / "not theirs" / "file"));
    // Root cleans up whatever the modes.
}

}  // namespace
