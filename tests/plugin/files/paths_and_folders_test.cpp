// Special-folder codes, the default folder, Vandrel_GetPath, Vandrel_GetName, Vandrel_ListDisks,
// Vandrel_OpenItem and the count messages of the file functions.
#include "plugin/files/file_test_support.h"

#include "files/file_operations.h"
#include "platform/fs/special_folders.h"
#include "platform/fs/volumes.h"

#include <support/process.h>

#include <chrono>
#include <thread>

#include <unistd.h>

namespace vdtest {
namespace {

namespace fs = std::filesystem;
using SpecialFolders = FileFunctionsTest;
using DefaultFolder = FileFunctionsTest;
using ItemPaths = FileFunctionsTest;

TEST_F(SpecialFolders, CodesLeadToTheirLinuxFoldersAndAreMadeWhenMissing) {
    Write(Home() / ".config" / "user-dirs.dirs",
          "# written by xdg-user-dirs-update\nXDG_DESKTOP_DIR=\"$HOME/Schreibtisch\"\n");
    const std::string home = Home().string();
    EXPECT_EQ(Call(u"Vandrel_GetPath ( \".d\" )"), home + "/Schreibtisch");
    EXPECT_TRUE(fs::is_directory(Home() / "Schreibtisch"));
    EXPECT_EQ(Call(u"Vandrel_GetPath ( \".O\" )"), home + "/Documents");  // not named: the fallback
    EXPECT_EQ(Call(u"Vandrel_GetPath ( \".X\" )"), home + "/.local/share/Trash/files");
    EXPECT_TRUE(fs::is_directory(Home() / ".local/share/Trash/files"));
    EXPECT_EQ(Call(u"Vandrel_GetPath ( \".S\" )"), "/etc");
    EXPECT_EQ(Call(u"Vandrel_GetPath ( \".F\" )"), fs::read_symlink("/proc/self/exe").parent_path().string());

    const std::string temporary = (root_ / "tmp" / ("vandrel-" + std::to_string(getuid()))).string();
    EXPECT_EQ(Call(u"Vandrel_GetPath ( \".t/sub/file.aif\" )"), "$-43:Vandrel_GetPath: Not a file path reference");
    fs::create_directories(temporary + "/sub");
    EXPECT_EQ(Call(u"Vandrel_GetPath ( \".t/sub/file.aif\" )"), temporary + "/sub/file.aif");
    struct stat info {};
    ASSERT_EQ(stat(temporary.c_str(), &info), 0);
    EXPECT_EQ(info.st_mode & 0777, 0700u);
    // A temporary folder others could reach is refused.
    chmod(temporary.c_str(), 0777);
    EXPECT_EQ(Call(u"Vandrel_GetPath ( \".T\" )"), "$-54:Vandrel_GetPath: Not a file path reference");
}

TEST_F(SpecialFolders, UnknownLettersAndDotSlashAreRefusedButDotDotClimbs) {
    const std::string refusal = "Unrecognized code - must be A, F, P, T, D, O, R, S, V, or U";
    for (const char16_t* code : {u"\"./x\"", u"\".Y\""})
        EXPECT_EQ(Call(std::u16string(u"Vandrel_GetPath ( ") + code + u" )"), "$20103:Vandrel_GetPath: " + refusal)
            << vdhost::utf16ToUtf8(code);
    EXPECT_EQ(Call(u"Vandrel_GetPath ( \"..\" )"), root_.path().string());
    EXPECT_EQ(Call(u"Vandrel_GetPath ( \"../home/x\" )"), Home().string() + "/x");
}

TEST_F(DefaultFolder, SetHasThreeOutcomesAndRelativePathsFollowIt) {
    Write(Work() / "sub" / "file.txt");
    EXPECT_EQ(Call(u"Vandrel_SetDefaultFolder ( \"sub\" )"), "");
    EXPECT_EQ(LastError(), "$0:Vandrel_SetDefaultFolder: No error.");
    EXPECT_EQ(Call(u"Vandrel_GetDefaultFolder"), (Work() / "sub").string());
    EXPECT_EQ(Call(u"Vandrel_GetPath ( \"file.txt\" )"), (Work() / "sub" / "file.txt").string());

    EXPECT_EQ(Call(u"Vandrel_SetDefaultFolder ( \"file.txt\" )"), "$0:Vandrel_SetDefaultFolder: Not a directory path");
    EXPECT_EQ(Call(u"Vandrel_GetDefaultFolder"), (Work() / "sub").string());

    // Without a display or a script the dialog cannot be shown: that reads as a cancel.
    EXPECT_EQ(Call(u"Vandrel_SetDefaultFolder ( \".U\" )"),
              "$0:Vandrel_SetDefaultFolder: Cancel (no dialog can be shown: no display, and no VANDREL_UI_SCRIPT)");
    EXPECT_EQ(Call(u"Vandrel_SetDefaultFolder ( \"missing/deeper\" )"),
              "$-43:Vandrel_SetDefaultFolder: Failed to set default path");
    EXPECT_EQ(Call(u"Vandrel_SetDefaultFolder ( 12 )"), "$20102:Vandrel_SetDefaultFolder: Parameter (path) must be text");
    EXPECT_EQ(Call(u"Vandrel_GetDefaultFolder"), (Work() / "sub").string());

    EXPECT_EQ(Call(u"Vandrel_SetDefaultFolder ( \"..\" )"), "");
    EXPECT_EQ(Call(u"Vandrel_GetDefaultFolder"), Work().string());
}

TEST(DefaultFolderAtStart, IsTheHomeFolder) {
    TempFolder folder;
    fs::create_directories(folder / "my home");
    auto r = runProcess({VDHOST_EXE, "--db", (folder / "T.vddb").string(), "--plugins", VD_PLUGIN_DIR, "eval",
                         "Vandrel_GetDefaultFolder"},
                        {{"HOME", (folder / "my home").string()}});
    EXPECT_EQ(r.status, 0) << r.err;
    EXPECT_EQ(r.out, (folder / "my home").string() + "\n");
}

TEST_F(ItemPaths, GetPathClimbsAndGetNameNamesItemsNotYetMade) {
    fs::create_directories(Work() / "a" / "b");
    const std::string item = (Work() / "a" / "b" / "new file.wav").string();
    EXPECT_EQ(Call(u"Vandrel_GetPath ( $a )", {item}), item);
    EXPECT_EQ(Call(u"Vandrel_GetPath ( $a ; -3 )", {item}), item);
    EXPECT_EQ(Call(u"Vandrel_GetPath ( $a ; 1 )", {item}), (Work() / "a" / "b").string());
    EXPECT_EQ(Call(u"Vandrel_GetPath ( $a ; 99 )", {item}), "/");
    EXPECT_EQ(Call(u"Vandrel_GetPath ( \"imagemac:/tmp\" )"), "/tmp");
    EXPECT_EQ(Call(u"Vandrel_GetPath ( $a )", {"size:10,20\rimage:x.jpg\rimagemac:" + item}), item);

    EXPECT_EQ(Call(u"Vandrel_GetName ( $a )", {item}), "new file.wav");
    EXPECT_EQ(LastError(), "$0:Vandrel_GetName: No error.");
    EXPECT_EQ(Call(u"Vandrel_GetName ( \"/no/such/x\" )"), "$-43:Vandrel_GetName: Not a file path reference");
    EXPECT_EQ(Call(u"Vandrel_GetPath ( \"/no/such/x\" )"), "$-43:Vandrel_GetPath: Not a file path reference");
}

TEST_F(ItemPaths, ListDisksNamesTheBootVolumeFirstAndCutsAtAWholeName) {
    const std::string disks = Call(u"Vandrel_ListDisks");
    const auto volumes = vd::platform::fs::MountedVolumes();
    EXPECT_EQ(disks.substr(0, disks.find('|')), volumes.front().name);
    EXPECT_NE(disks.back(), '|');
    EXPECT_LT(disks.size(), 500u);
    EXPECT_EQ(vd::files::JoinDiskNames({"root", "Photos", "Backup"}), "root|Photos|Backup");
    // 495 + "|" + 3 = 499 bytes and the terminator fill the 500 bytes; one more byte does not fit.
    const std::string long1(495, 'x');
    EXPECT_EQ(vd::files::JoinDiskNames({long1, "abc", "z"}), long1 + "|abc");
    EXPECT_EQ(vd::files::JoinDiskNames({long1, "abcd", "z"}), long1);  // cut there: no name after a gap
}

TEST_F(ItemPaths, OpenItemHandsTheItemToXdgOpenWithoutWaiting) {
    const auto bin = root_ / "bin";
    const auto log = root_ / "opened.txt";
    Write(bin / "xdg-open", "#!/bin/sh\nprintf '%s' \"$1\" > '" + log.string() + "'\n");
    chmod((bin / "xdg-open").c_str(), 0755);
    ScopedEnv path("PATH", bin.string() + ":/usr/bin:/bin");
    Write(Work() / "doc with blanks.odt");

    EXPECT_EQ(Call(u"Vandrel_OpenItem ( \"doc with blanks.odt\" )"), "");
    for (int i = 0; i < 100 && !fs::exists(log); ++i) std::this_thread::sleep_for(std::chrono::milliseconds(50));
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    EXPECT_EQ(readFile(log), (Work() / "doc with blanks.odt").string());

    EXPECT_EQ(Call(u"Vandrel_OpenItem ( \"not there\" )"), "$-43:Vandrel_OpenItem: OpenItem failed");
}

}  // namespace
}  // namespace vdtest
