// ".U" and ".V" through the scripted dialogs, and what happens when no dialog can be shown.
#include "plugin/files/file_test_support.h"

#include "platform/ui/scripted_dialogs.h"

namespace vdtest {
namespace {

namespace fs = std::filesystem;
using ScriptedDialog = FileFunctionsTest;

TEST_F(ScriptedDialog, FolderAndFileChoosersTakeTheScriptsAnswersInOrder) {
    fs::create_directories(Work() / "chosen folder" / "inner");
    Write(Work() / "picture ¶.jpg", "jpeg");
    const auto script = root_ / "answers.txt";
    Write(script, "# answers for this test\nchoose-folder " + (Work() / "chosen folder").string() +
                      "\n\nchoose-file " + (Work() / "picture ¶.jpg").string() + "\ncancel\n" +
                      "choose-folder " + (Work() / "chosen folder").string() + "\n");
    ScopedEnv ui("VANDREL_UI_SCRIPT", script.string());

    EXPECT_EQ(Call(u"Vandrel_GetPath ( \".U/inner\" )"), (Work() / "chosen folder" / "inner").string());
    // ".V" puts the chosen file's path before the function's own answer.
    const std::string info = Call(u"Vandrel_GetItemInfo ( \".v:Choose the picture\" )");
    EXPECT_TRUE(info.starts_with((Work() / "picture ¶.jpg").string() + "\rCreated: ")) << info;
    EXPECT_EQ(Call(u"Vandrel_SetDefaultFolder ( \".U\" )"), "$0:Vandrel_SetDefaultFolder: Cancel");
    EXPECT_EQ(Call(u"Vandrel_GetDefaultFolder"), Work().string());
    EXPECT_EQ(Call(u"Vandrel_SetDefaultFolder ( \".U\" )"), "");
    EXPECT_EQ(Call(u"Vandrel_GetDefaultFolder"), (Work() / "chosen folder").string());
    // The script has run out: no answer is a cancel that says why.
    EXPECT_EQ(Call(u"Vandrel_ListFolder ( \".U\" ; 1 )"),
              "$-128:Vandrel_ListFolder: ListFolder failed (the UI script has no answer left for this folder chooser)");

    // A rewritten script starts again from its first answer.
    Write(script, "choose-file " + (Work() / "picture ¶.jpg").string() + "\n");
    EXPECT_EQ(Call(u"Vandrel_GetName ( \".V\" )"), (Work() / "picture ¶.jpg").string() + "\rpicture ¶.jpg");
}

TEST(ScriptLines, AnswersMustFitTheDialog) {
    using vd::platform::ui::AnswerFromLine;
    using vd::platform::ui::DialogKind;
    using vd::platform::ui::DialogRequest;
    const DialogRequest folder{DialogKind::ChooseFolder, "", "/"};
    const DialogRequest file{DialogKind::ChooseFile, "", "/"};
    const DialogRequest alert{DialogKind::Alert, "Sure?", ""};
    EXPECT_EQ(AnswerFromLine("choose-folder /etc/../usr/", folder).path, "/usr");
    EXPECT_EQ(AnswerFromLine("choose-folder /etc/hostname", folder).status, -1407);
    EXPECT_EQ(AnswerFromLine("choose-file /etc", file).status, -1302);
    EXPECT_EQ(AnswerFromLine("choose-file /no/such/file", file).status, -43);
    EXPECT_EQ(AnswerFromLine("choose-file /etc", folder).status, -50);
    EXPECT_EQ(AnswerFromLine("ok", folder).status, -50);
    EXPECT_EQ(AnswerFromLine("ok", alert).status, 0);
    EXPECT_EQ(AnswerFromLine("cancel", alert).status, -128);
    EXPECT_EQ(AnswerFromLine("choose-file /etc", folder).detail,
              "(the UI script answers \"choose-file /etc\" to a folder chooser)");
}

}  // namespace
}  // namespace vdtest
