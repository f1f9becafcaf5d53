// Which folders the file functions refuse to delete, move or rename. The machine's own folders are
// only ever asked about here, never handed to a function that could remove them.
#include "files/kept_folders.h"

#include "files/file_path_resolver.h"
#include "plugin/files/file_test_support.h"
#include "platform/fs/special_folders.h"

namespace vdtest {
namespace {

namespace fs = std::filesystem;
using vd::files::CheckRemoval;
using vd::files::IsKeptFolder;

TEST(KeptFolders, TheRootWhatLiesDirectlyUnderItAndWhatHoldsAKeptFolder) {
    const std::vector<std::string> kept{"/home/ann", "/usr/share/applications"};
    for (const char* path : {"/", "/etc", "/home/ann", "/usr/share", "/usr/share/applications"})
        EXPECT_TRUE(IsKeptFolder(path, kept)) << path;
    for (const char* path : {"/home/ann/Documents", "/home/annex", "/usr/share/applications/a.desktop"})
        EXPECT_FALSE(IsKeptFolder(path, kept)) << path;
}

TEST(KeptFolders, TheMachinesOwnFoldersAreKeptWhicheverWayTheyAreReached) {
    const char* home = std::getenv("HOME");
    ASSERT_TRUE(home && home[0] == '/');
    for (const std::string& path : {std::string("/"), std::string("/etc"), std::string(home)}) {
        const auto check = CheckRemoval(path);
        EXPECT_EQ(check.status, 0) << path;
        EXPECT_TRUE(check.kept) << path;
    }
    // Through a link on the way: the folder it reaches is what counts. The link itself is only a link.
    TempFolder links;
    fs::create_directory_symlink("/", links / "to root");
    fs::create_directory_symlink(home, links / "to home");
    EXPECT_TRUE(CheckRemoval((links / "to root" / "etc").string()).kept);
    EXPECT_FALSE(CheckRemoval((links / "to root").string()).kept);
    EXPECT_FALSE(CheckRemoval((links / "to home").string()).kept);
    EXPECT_FALSE(CheckRemoval((links / "a file of mine").string()).kept);
}

using KeptSpecialFolders = FileFunctionsTest;

TEST_F(KeptSpecialFolders, SystemCodesAndTheirSpellingsResolveToKeptFolders) {
    const auto kept = [](const std::string& text) {
        const vd::files::ResolvedItem item = vd::files::ResolveFilePath(vd::files::PathArgument{text}, "/tmp");
        EXPECT_TRUE(item.Exists()) << text;
        return CheckRemoval(item.Path()).kept;
    };
    for (const char* text : {".S", ".P", ".T", ".F", "/tmp/../etc", "/usr//share/", "~/../.."})
        EXPECT_TRUE(kept(text)) << text;
    // The user's own folders and what lies inside the kept ones are theirs to change.
    Write(Home() / ".config" / "app.conf");
    Write(Home() / ".local" / "share" / "Trash" / "files" / "old.txt");
    for (const char* text : {".D", ".O", ".P/app.conf", ".X/old.txt"}) EXPECT_FALSE(kept(text)) << text;
}

// The one kept folder handed to the functions themselves: the home folder the fixture made.
TEST_F(KeptSpecialFolders, TheHomeFolderIsNeitherDeletedNorMovedNorRenamed) {
    Write(Home() / "keep me");
    fs::create_directory_symlink(root_.path(), Work() / "up");
    fs::create_directory_symlink(Home(), Work() / "link to home");
    for (const std::string& path : {Home().string(), std::string("~/"), std::string("up/home"), Work().string() + "/../home"})
        EXPECT_EQ(Call(u"Vandrel_DeleteItem ( $a ; 1 )", {path}),
                  "$-54:Vandrel_DeleteItem: Cannot delete the root, the home folder or a system folder")
            << path;
    EXPECT_EQ(Call(u"Vandrel_MoveItem ( \"~/\" ; $a )", {Work().string()}),
              "$-54:Vandrel_MoveItem: Cannot move the root, the home folder or a system folder");
    EXPECT_EQ(Call(u"Vandrel_RenameItem ( \"up/home\" ; \"elsewhere\" )"),
              "$-54:Vandrel_RenameItem: Cannot rename the root, the home folder or a system folder");
    EXPECT_TRUE(fs::exists(Home() / "keep me"));
    // A link to the home folder is only a link: it goes, and the home folder stays.
    EXPECT_EQ(Call(u"Vandrel_DeleteItem ( \"link to home\" ; 0 )"), "");
    EXPECT_FALSE(fs::is_symlink(Work() / "link to home"));
    EXPECT_TRUE(fs::exists(Home() / "keep me"));
}

}  // namespace
}  // namespace vdtest
