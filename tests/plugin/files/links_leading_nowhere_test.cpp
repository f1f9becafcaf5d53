// Symbolic links that lead nowhere (looping back on themselves, in a circle of two, or broken) are
// items all the same: listed, described, copied as links, renamed, moved and deleted.
#include "plugin/files/file_test_support.h"

namespace vdtest {
namespace {

using LinksLeadingNowhere = FileFunctionsTest;
namespace fs = std::filesystem;

TEST_F(LinksLeadingNowhere, AreItemsEveryFileFunctionCanHandle) {
    fs::create_directories(Work() / "copies");
    fs::create_directories(Work() / "moved");
    fs::create_symlink("loop", Work() / "loop");
    fs::create_symlink("circle b", Work() / "circle a");
    fs::create_symlink("circle a", Work() / "circle b");
    fs::create_symlink("gone", Work() / "broken");
    // A path that runs through a loop reaches nothing.
    EXPECT_EQ(Call(u"Vandrel_GetItemInfo ( \"circle b/x\" )"), "$-43:Vandrel_GetItemInfo: ItemInfo failed");

    for (const std::string name : {"loop", "circle a", "broken"}) {
        const std::string target = fs::read_symlink(Work() / name).string();
        const auto lines = Lines(Call(u"Vandrel_GetItemInfo ( $a )", {name}));
        ASSERT_EQ(lines.size(), 10u) << name;
        EXPECT_EQ(lines[7], "Alias: 1") << name;

        EXPECT_EQ(Call(u"Vandrel_CopyItem ( $a ; \"copies\" ; 0 )", {name}), "") << name;
        EXPECT_EQ(fs::read_symlink(Work() / "copies" / name), target) << name;

        EXPECT_EQ(Call(u"Vandrel_RenameItem ( $a ; $b )", {name, name + " renamed"}), "") << name;
        EXPECT_EQ(Call(u"Vandrel_MoveItem ( $a ; \"moved\" )", {name + " renamed"}), "") << name;
        EXPECT_EQ(fs::read_symlink(Work() / "moved" / (name + " renamed")), target) << name;

        EXPECT_EQ(Call(u"Vandrel_DeleteItem ( $a ; 0 )", {"moved/" + name + " renamed"}), "") << name;
        EXPECT_FALSE(fs::is_symlink(Work() / "moved" / (name + " renamed"))) << name;
    }
    EXPECT_EQ(Call(u"Vandrel_ListFolder ( \"copies\" ; 1 )").size(), std::string("^loop\r^circle a\r^broken").size());
}

}  // namespace
}  // namespace vdtest
