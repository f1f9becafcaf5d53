// Vandrel_GetItemInfo and Vandrel_ListFolder on real trees.
#include "plugin/files/file_test_support.h"

#include <unistd.h>

namespace vdtest {
namespace {

using ItemInfo = FileFunctionsTest;
using ListFolder = FileFunctionsTest;

std::vector<std::string> Sorted(std::vector<std::string> names) {
    std::sort(names.begin(), names.end());
    return names;
}

TEST_F(ItemInfo, FileReportHasTenLinesFromTheInodeAndTheFinderAttributes) {
    const auto file = Work() / "Read me.txt";
    Write(file, "12345");
    if (!SetAttribute(file, "user.com.apple.FinderInfo", FinderInfoBytes("TEXT", "ttxt", 0x4000)) ||
        !SetAttribute(file, "user.com.apple.ResourceFork", std::string(300, 'r'))) {
        GTEST_SKIP() << "the temporary folder keeps no user attributes";
    }
    chmod(file.c_str(), 0444);
    const std::string report = Call(u"Vandrel_GetItemInfo ( $a )", {file.string()});
    const auto lines = Lines(report);
    ASSERT_EQ(lines.size(), 10u) << report;
    EXPECT_EQ(report.back(), '\r');
    EXPECT_TRUE(lines[0].starts_with("Created: ")) << lines[0];
    EXPECT_TRUE(lines[1].starts_with("Modified: ")) << lines[1];
    EXPECT_EQ(lines[1].size(), std::string("Modified: dd-mm-yyyy hh:mm:ss").size());
    // Invisible by the Finder flag, though the name has no ".".
    EXPECT_EQ(std::vector<std::string>(lines.begin() + 2, lines.end()),
              (std::vector<std::string>{"Invisible: 1", "Directory: 0", "Data size (b): 5", "Resource size (b): 300",
                                        "Locked: 1", "Alias: 0", "Type: TEXT", "Creator: ttxt"}));
    EXPECT_EQ(LastError(), "$0:Vandrel_GetItemInfo: No error.");
}

TEST_F(ItemInfo, FolderReportHasFourLinesAndPlainFilesHaveNoTypeOrLock) {
    std::filesystem::create_directories(Work() / ".hidden folder");
    // A path that starts with "." is a special-folder code; the full path reaches the folder.
    const auto folder = Lines(Call(u"Vandrel_GetItemInfo ( $a )", {(Work() / ".hidden folder").string()}));
    ASSERT_EQ(folder.size(), 4u);
    EXPECT_EQ(folder[2] + "|" + folder[3], "Invisible: 1|Directory: 1");

    Write(Work() / "plain");
    const auto file = Lines(Call(u"Vandrel_GetItemInfo ( \"plain\" )"));
    ASSERT_EQ(file.size(), 10u);
    EXPECT_EQ(file[2] + "|" + file[6] + "|" + file[8], "Invisible: 0|Locked: 0|Type: ");
}

// (Links that lead nowhere have tests of their own.)
TEST_F(ItemInfo, ALinkToAFolderIsAnAliasNotAFolder) {
    std::filesystem::create_directory_symlink(Home(), Work() / "to home");
    const auto lines = Lines(Call(u"Vandrel_GetItemInfo ( \"to home\" )"));
    ASSERT_EQ(lines.size(), 10u);
    EXPECT_EQ(lines[3] + "|" + lines[7], "Directory: 0|Alias: 1");
}

TEST_F(ItemInfo, MissingItemsAndContainersFail) {
    EXPECT_EQ(Call(u"Vandrel_GetItemInfo ( \"nothing here\" )"), "$-43:Vandrel_GetItemInfo: ItemInfo failed");
    // A container with data is not a path.
    EXPECT_EQ(Call(u"Vandrel_GetItemInfo ( Base64Decode ( \"AAAA\" ; \"a.bin\" ) )"),
              "$555:Vandrel_GetItemInfo: ItemInfo failed");
}

TEST_F(ListFolder, MarkersComeInTheirOrderAndWithoutListAllOnlyVisibleFilesShow) {
    const auto folder = Work() / "list";
    Write(folder / "visible.txt");
    Write(folder / ".dotfile");
    std::filesystem::create_directories(folder / "sub");
    std::filesystem::create_directories(folder / ".hidden sub");
    std::filesystem::create_symlink(folder / "visible.txt", folder / ".hidden alias");
    std::filesystem::create_symlink(folder / "sub", folder / "alias");
    Write(folder / "flagged");
    const bool attributes = SetAttribute(folder / "flagged", "user.com.apple.FinderInfo",
                                         FinderInfoBytes("TEXT", "ttxt", 0x4000));

    EXPECT_EQ(Sorted(Lines(Call(u"Vandrel_ListFolder ( \"list\" ; 1 )"))),
              Sorted({"^alias", "visible.txt", "~.dotfile", "~^.hidden alias", "ƒsub", "ƒ~.hidden sub",
                      attributes ? "~flagged" : "flagged"}));
    // No trailing return.
    EXPECT_EQ(Call(u"Vandrel_ListFolder ( \"list\" ; 0 )"), attributes ? "visible.txt" : "visible.txt\rflagged");
    EXPECT_EQ(LastError(), "$0:Vandrel_ListFolder: No error.");
}

// A large folder's attributes are read by several threads at once: each entry must still get its
// own flags, in the file system's order.
TEST_F(ListFolder, LargeFoldersKeepEveryEntrysFlagsAndTheirOrder) {
    const auto folder = Work() / "large";
    std::filesystem::create_directories(folder);
    bool attributes = true;
    for (int i = 0; i < 2000; ++i) {
        const auto path = folder / ("f" + std::to_string(i));
        Write(path);
        const uint16_t flags = (i % 3 == 0 ? 0x4000 : 0) | (i % 5 == 0 ? 0x8000 : 0);  // invisible, alias
        if (flags) attributes &= SetAttribute(path, "user.com.apple.FinderInfo", FinderInfoBytes("TEXT", "ttxt", flags));
    }
    if (!attributes) GTEST_SKIP() << "this file system keeps no user attributes";
    std::vector<std::string> expected;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        const std::string name = entry.path().filename();
        const int i = std::stoi(name.substr(1));
        expected.push_back(std::string(i % 3 == 0 ? "~" : "") + (i % 5 == 0 ? "^" : "") + name);
    }
    EXPECT_EQ(Lines(Call(u"Vandrel_ListFolder ( \"large\" ; 1 )")), expected);
}

TEST_F(ListFolder, EmptyFoldersListAsEmptyTextAndFilesOrMissingFoldersAreRefused) {
    std::filesystem::create_directories(Work() / "empty");
    EXPECT_EQ(Call(u"Vandrel_ListFolder ( \"empty\" ; 1 )"), "");
    EXPECT_EQ(LastError(), "$0:Vandrel_ListFolder: No error.");
    std::filesystem::create_directories(Work() / "only hidden" / "sub");
    Write(Work() / "only hidden" / ".invisible");
    EXPECT_EQ(Call(u"Vandrel_ListFolder ( \"only hidden\" ; 0 )"), "");
    // A file or a missing folder is refused.
    Write(Work() / "file.txt");
    EXPECT_EQ(Call(u"Vandrel_ListFolder ( \"file.txt\" ; 1 )"),
              "$-1407:Vandrel_ListFolder: ListFolder requires destination directory, not file");
    EXPECT_EQ(Call(u"Vandrel_ListFolder ( \"missing\" ; 1 )"), "$-43:Vandrel_ListFolder: ListFolder failed");
}

TEST_F(ListFolder, OddNamesArriveAsTheyAre) {
    const auto folder = Work() / "odd \"names\"";
    const std::vector<std::string> names = {"Größe ünd Maß.txt", "two  blanks ", "it's \"quoted\" a¶b"};
    for (const auto& name : names) Write(folder / name);
    EXPECT_EQ(Sorted(Lines(Call(u"Vandrel_ListFolder ( $a ; 0 )", {folder.string()}))), Sorted(names));
}

}  // namespace
}  // namespace vdtest
