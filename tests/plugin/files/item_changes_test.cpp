// Vandrel_CreateFolder, Vandrel_MoveItem, Vandrel_RenameItem, Vandrel_DeleteItem, Vandrel_CopyItem
// and Vandrel_CreateAlias on real trees.
#include "plugin/files/file_test_support.h"

#include <fcntl.h>
#include <unistd.h>

namespace vdtest {
namespace {

using ItemChanges = FileFunctionsTest;
namespace fs = std::filesystem;

TEST_F(ItemChanges, CreateFolderMakesOddNamesAndRefusesFilesAndDuplicates) {
    for (const std::string name : {"it's \"new\" ä¶", " blank "}) {
        EXPECT_EQ(Call(u"Vandrel_CreateFolder ( $a ; $b )", {Work().string(), name}), "") << name;
        EXPECT_TRUE(fs::is_directory(Work() / name)) << name;
    }
    EXPECT_EQ(LastError(), "$0:Vandrel_CreateFolder: No error.");
    EXPECT_EQ(Call(u"Vandrel_CreateFolder ( $a ; \" blank \" )", {Work().string()}),
              "$-48:Vandrel_CreateFolder: CreateFolder failed");
    EXPECT_EQ(Call(u"Vandrel_CreateFolder ( $a ; \"a/b\" )", {Work().string()}),
              "$-37:Vandrel_CreateFolder: CreateFolder failed");
    Write(Work() / "file");
    EXPECT_EQ(Call(u"Vandrel_CreateFolder ( \"file\" ; \"x\" )"),
              "$-1407:Vandrel_CreateFolder: CreateFolder requires destination directory, not file");
    EXPECT_EQ(Call(u"Vandrel_CreateFolder ( \"missing\" ; \"x\" )"), "$-43:Vandrel_CreateFolder: CreateFolder failed");
}

TEST_F(ItemChanges, MoveIntoAFolderKeepsTheNameAndAFileDestinationMovesNothing) {
    Write(Work() / "a.txt", "a");
    fs::create_directories(Work() / "into");
    Write(Work() / "target.txt", "t");
    const std::string before = TreeListing(Work());
    EXPECT_EQ(Call(u"Vandrel_MoveItem ( \"a.txt\" ; \"target.txt\" )"),
              "$-1407:Vandrel_MoveItem: MoveItem requires destination directory, not file");
    EXPECT_EQ(TreeListing(Work()), before);
    EXPECT_EQ(Call(u"Vandrel_MoveItem ( \"nope\" ; \"into\" )"), "$-43:Vandrel_MoveItem: Source item not found");
    EXPECT_EQ(Call(u"Vandrel_MoveItem ( \"a.txt\" ; \"nope\" )"),
              "$-43:Vandrel_MoveItem: Destination folder not found");

    EXPECT_EQ(Call(u"Vandrel_MoveItem ( \"a.txt\" ; \"into\" )"), "");
    EXPECT_EQ(readFile(Work() / "into" / "a.txt"), "a");
    EXPECT_FALSE(fs::exists(Work() / "a.txt"));

    // A move the file system refuses reports nothing, and replaces nothing either.
    Write(Work() / "target.txt", "second");
    Write(Work() / "into" / "target.txt", "first");
    EXPECT_EQ(Call(u"Vandrel_MoveItem ( \"target.txt\" ; \"into\" )"), "");
    EXPECT_EQ(LastError(), "$0:Vandrel_MoveItem: No error.");
    EXPECT_EQ(readFile(Work() / "into" / "target.txt"), "first");
    EXPECT_EQ(readFile(Work() / "target.txt"), "second");
}

TEST_F(ItemChanges, RenameInPlaceNeverOverAnotherItem) {
    Write(Work() / "old.txt", "old");
    Write(Work() / "taken.txt", "taken");
    EXPECT_EQ(Call(u"Vandrel_RenameItem ( \"old.txt\" ; \"Ünïcode ¶ \\\"q\\\".txt\" )"), "");
    EXPECT_EQ(readFile(Work() / "Ünïcode \r \"q\".txt"), "old");  // "¶" in a calculation is a return
    EXPECT_EQ(Call(u"Vandrel_RenameItem ( $a ; \"taken.txt\" )", {"Ünïcode \r \"q\".txt"}),
              "$-48:Vandrel_RenameItem: RenameItem failed");
    EXPECT_EQ(readFile(Work() / "taken.txt"), "taken");
    EXPECT_EQ(Call(u"Vandrel_RenameItem ( \"taken.txt\" ; \"\" )"), "$-37:Vandrel_RenameItem: RenameItem failed");
    EXPECT_EQ(Call(u"Vandrel_RenameItem ( \"ghost\" ; \"x\" )"), "$-43:Vandrel_RenameItem: RenameItem failed");
}

TEST_F(ItemChanges, DeleteNeedsTheFolderFlagForFoldersAndRemovesLockedTrees) {
    const auto tree = Work() / "tree";
    Write(tree / "locked.txt");
    Write(tree / "deep" / "deeper" / "locked too");
    fs::create_directories(tree / "empty");
    std::filesystem::create_symlink(Home(), tree / "alias to home");
    Write(Home() / "keep me");
    chmod((tree / "locked.txt").c_str(), 0444);
    chmod((tree / "deep" / "deeper" / "locked too").c_str(), 0400);
    chmod((tree / "deep" / "deeper").c_str(), 0555);  // a locked folder
    chmod((tree / "deep").c_str(), 0500);

    const std::string before = TreeListing(Work());
    EXPECT_EQ(Call(u"Vandrel_DeleteItem ( \"tree\" ; 0 )"),
              "$-1302:Vandrel_DeleteItem: folderFlag must be set to delete a directory");
    EXPECT_EQ(TreeListing(Work()), before);

    EXPECT_EQ(Call(u"Vandrel_DeleteItem ( \"tree\" ; 1 )"), "");
    EXPECT_EQ(LastError(), "$0:Vandrel_DeleteItem: No error.");
    EXPECT_FALSE(fs::exists(tree));
    EXPECT_TRUE(fs::exists(Home() / "keep me"));  // the alias went, not what it points to

    Write(Work() / "locked file", "x");
    chmod((Work() / "locked file").c_str(), 0444);
    EXPECT_EQ(Call(u"Vandrel_DeleteItem ( \"locked file\" ; 0 )"), "");
    EXPECT_FALSE(fs::exists(Work() / "locked file"));
    EXPECT_EQ(Call(u"Vandrel_DeleteItem ( \"locked file\" ; 0 )"), "$-43:Vandrel_DeleteItem: Source item not found");
}

TEST_F(ItemChanges, CopyTakesTheWholeTreeWithAttributesModesAndTimes) {
    const auto source = Work() / "album";
    Write(source / "song.aif", std::string(100000, 's'));
    Write(source / "inner" / "note.txt", "note");
    fs::create_symlink("song.aif", source / "alias");
    chmod((source / "inner" / "note.txt").c_str(), 0440);
    const bool attributes =
        SetAttribute(source / "song.aif", "user.com.apple.FinderInfo", FinderInfoBytes("AIFF", "TVOD", 0)) &&
        SetAttribute(source / "song.aif", "user.com.apple.ResourceFork", "resource bytes") &&
        SetAttribute(source / "inner", "user.com.apple.FinderInfo", FinderInfoBytes("\0\0\0\0", "\0\0\0\0", 0x4000));
    const timespec old[2] = {{1000000000, 0}, {1000000000, 0}};
    utimensat(AT_FDCWD, (source / "song.aif").c_str(), old, 0);
    fs::create_directories(Work() / "backup");

    EXPECT_EQ(Call(u"Vandrel_CopyItem ( \"album\" ; \"backup\" ; 0 )"), "");
    EXPECT_EQ(LastError(), "$0:Vandrel_CopyItem: No error.");
    const auto copy = Work() / "backup" / "album";
    EXPECT_EQ(TreeListing(copy), TreeListing(source));
    EXPECT_EQ(readFile(copy / "song.aif"), std::string(100000, 's'));
    EXPECT_EQ(fs::read_symlink(copy / "alias"), "song.aif");
    EXPECT_EQ(fs::status(copy / "inner" / "note.txt").permissions(), fs::perms::owner_read | fs::perms::group_read);
    EXPECT_EQ(fs::last_write_time(copy / "song.aif"), fs::last_write_time(source / "song.aif"));  // the old time
    if (attributes) {
        EXPECT_EQ(Attribute(copy / "song.aif", "user.com.apple.FinderInfo"), FinderInfoBytes("AIFF", "TVOD", 0));
        EXPECT_EQ(Attribute(copy / "song.aif", "user.com.apple.ResourceFork"), "resource bytes");
        EXPECT_EQ(Attribute(copy / "inner", "user.com.apple.FinderInfo"),
                  FinderInfoBytes("\0\0\0\0", "\0\0\0\0", 0x4000));
    }
    // Nothing of the copy's making is left beside it (inside it, the listings above agree).
    EXPECT_EQ(std::distance(fs::directory_iterator(Work() / "backup"), fs::directory_iterator()), 1);
}

TEST_F(ItemChanges, CopyReplacesOnlyWhenAskedAndToANewNameWhenGivenOne) {
    Write(Work() / "a.txt", "new");
    fs::create_directories(Work() / "dest");
    Write(Work() / "dest" / "a.txt", "old");
    EXPECT_EQ(Call(u"Vandrel_CopyItem ( \"a.txt\" ; \"dest\" ; 0 )"),
              "$20200:Vandrel_CopyItem: Target file already exists and replace flag is false");
    EXPECT_EQ(readFile(Work() / "dest" / "a.txt"), "old");
    EXPECT_EQ(Call(u"Vandrel_CopyItem ( \"a.txt\" ; \"dest\" ; 1 )"), "");
    EXPECT_EQ(readFile(Work() / "dest" / "a.txt"), "new");

    EXPECT_EQ(Call(u"Vandrel_CopyItem ( \"a.txt\" ; \"dest/b renamed.txt\" ; 0 )"), "");
    EXPECT_EQ(readFile(Work() / "dest" / "b renamed.txt"), "new");

    // A folder replaces a folder whole: nothing of the old one survives inside the new.
    Write(Work() / "tree" / "one");
    Write(Work() / "dest" / "tree" / "stale");
    EXPECT_EQ(Call(u"Vandrel_CopyItem ( \"tree\" ; \"dest\" ; 1 )"), "");
    EXPECT_EQ(TreeListing(Work() / "dest"), "a.txt\nb renamed.txt\ntree/\ntree/one\n");

    EXPECT_EQ(Call(u"Vandrel_CopyItem ( \"none\" ; \"dest\" ; 1 )"), "$-43:Vandrel_CopyItem: Source item not found");
    EXPECT_EQ(Call(u"Vandrel_CopyItem ( \"a.txt\" ; \"no/such/place\" ; 1 )"),
              "$-43:Vandrel_CopyItem: CopyItem failed");
    EXPECT_EQ(Call(u"Vandrel_CopyItem ( \"tree\" ; \"tree\" ; 1 )"), "$-50:Vandrel_CopyItem: CopyItem failed");
}

TEST_F(ItemChanges, AFailedCopyLeavesNothingBehind) {
    // A pipe cannot be copied: the copy fails after it has already copied the files before it.
    Write(Work() / "with pipe" / "a first file", std::string(5000, 'a'));
    Write(Work() / "with pipe" / "sub" / "more");
    ASSERT_EQ(mkfifo((Work() / "with pipe" / "sub" / "pipe").c_str(), 0600), 0);
    fs::create_directories(Work() / "dest");
    Write(Work() / "dest" / "with pipe" / "old", "old");
    const std::string before = TreeListing(Work() / "dest");
    EXPECT_EQ(Call(u"Vandrel_CopyItem ( \"with pipe\" ; \"dest\" ; 1 )"), "$-50:Vandrel_CopyItem: CopyItem failed");
    EXPECT_EQ(TreeListing(Work() / "dest"), before);
    EXPECT_EQ(readFile(Work() / "dest" / "with pipe" / "old"), "old");
    EXPECT_EQ(Call(u"Vandrel_CopyItem ( \"with pipe\" ; \"dest/fresh\" ; 0 )"), "$-50:Vandrel_CopyItem: CopyItem failed");
    EXPECT_EQ(TreeListing(Work() / "dest"), before);
}

TEST_F(ItemChanges, AliasIsALinkToTheTargetsAbsolutePath) {
    Write(Work() / "doc.txt", "doc");
    EXPECT_EQ(Call(u"Vandrel_CreateAlias ( \"doc.txt\" ; \"doc alias\" )"), "");
    EXPECT_EQ(fs::read_symlink(Work() / "doc alias"), Work() / "doc.txt");
    EXPECT_EQ(Call(u"Vandrel_CreateAlias ( \"doc.txt\" ; \"doc alias\" )"),
              "$-48:Vandrel_CreateAlias: CreateAlias failed");
    EXPECT_EQ(Call(u"Vandrel_CreateAlias ( \"missing\" ; \"x\" )"), "$-43:Vandrel_CreateAlias: Source item not found");
    EXPECT_EQ(Call(u"Vandrel_CreateAlias ( \"doc.txt\" ; \"no/where\" )"),
              "$-43:Vandrel_CreateAlias: CreateAlias failed");
}

}  // namespace
}  // namespace vdtest
