// ".U" and ".V" through the scripted dialogs, settings forms, and what happens when no dialog can be
// shown.
#include "plugin/files/file_test_support.h"

#include "platform/ui/dialog_service.h"
#include "platform/ui/scripted_dialogs.h"

namespace vdtest {
namespace {

namespace fs = std::filesystem;
using ScriptedDialog = FileFunctionsTest;
using vd::platform::ui::FormRequest;
using Indices = std::vector<size_t>;

FormRequest WaveForm() {
    return {"WAVE Settings",
            {{"rate", "Sample rate", {{"source", "Same as the sound"}, {"8000", "8000 Hz"}, {"22050", "22050 Hz"}}, 0},
             {"channels", "Channels", {{"mono", "Mono"}, {"stereo", "Stereo"}}, 1}}};
}

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
    EXPECT_EQ(AnswerFromLine("ok rate=8000", alert).status, -50);
    EXPECT_EQ(AnswerFromLine("cancel", alert).status, -128);
    EXPECT_EQ(AnswerFromLine("choose-file /etc", folder).detail,
              "(the UI script answers \"choose-file /etc\" to a folder chooser)");
}

TEST(ScriptLines, FormsTakeOkWithSettingsOrCancel) {
    using vd::platform::ui::AnswerFromLine;
    const FormRequest form = WaveForm();
    EXPECT_EQ(AnswerFromLine("ok", form).selected, (Indices{0, 1}));
    const auto set = AnswerFromLine("ok  channels=Mono\trate=22050", form);
    EXPECT_EQ(set.status, 0);
    EXPECT_EQ(set.selected, (Indices{2, 0}));
    EXPECT_EQ(AnswerFromLine("cancel", form).status, -128);

    const auto unknownName = AnswerFromLine("ok rate=8000 bitrate=128", form);
    EXPECT_EQ(unknownName.status, -50);
    EXPECT_TRUE(unknownName.selected.empty());
    EXPECT_EQ(unknownName.detail,
              "(the UI script sets \"bitrate\", which the WAVE Settings dialog does not have: rate, channels)");
    EXPECT_EQ(AnswerFromLine("ok rate=12345", form).detail,
              "(the UI script gives rate \"12345\"; the choices are source, 8000, 22050)");
    EXPECT_EQ(AnswerFromLine("ok rate", form).status, -50);
    const auto otherDialog = AnswerFromLine("choose-file /etc/hostname", form);
    EXPECT_EQ(otherDialog.status, -50);
    EXPECT_EQ(otherDialog.detail, "(the UI script answers \"choose-file /etc/hostname\" to the WAVE Settings dialog)");
}

TEST_F(ScriptedDialog, FormsTakeTheScriptsAnswersInOrderAndRefuseMalformedRequests) {
    using vd::platform::ui::ShowForm;
    EXPECT_EQ(ShowForm(WaveForm()).detail, "(no dialog can be shown: no display, and no VANDREL_UI_SCRIPT)");
    const auto script = root_ / "answers.txt";
    Write(script, "ok rate=8000\ncancel\n");
    ScopedEnv ui("VANDREL_UI_SCRIPT", script.string());
    EXPECT_EQ(ShowForm(WaveForm()).selected, (Indices{1, 1}));
    EXPECT_EQ(ShowForm(WaveForm()).status, -128);
    const auto ranOut = ShowForm(WaveForm());
    EXPECT_EQ(ranOut.status, -128);
    EXPECT_EQ(ranOut.detail, "(the UI script has no answer left for the WAVE Settings dialog)");

    FormRequest empty = WaveForm();
    empty.controls[1].choices.clear();
    EXPECT_EQ(ShowForm(empty).status, -50);
    FormRequest pastTheEnd = WaveForm();
    pastTheEnd.controls[0].selected = 3;
    EXPECT_EQ(ShowForm(pastTheEnd).detail, "(the settings form's control \"rate\" starts on a choice it does not have)");
}

}  // namespace
}  // namespace vdtest
