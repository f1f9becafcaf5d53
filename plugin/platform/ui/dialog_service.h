// The dialogs the plug-in shows: choosing a folder or a file, alerts, and settings forms. Answered
// by a script of answers when VANDREL_UI_SCRIPT names one (unattended runs, tests); else by GTK
// when there is a display; else at once with -128 and the reason, so that a server never waits for
// a dialog no one can see.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "util/status_codes.h"

namespace vd::platform::ui {

inline constexpr const char* kScriptVariable = "VANDREL_UI_SCRIPT";

enum class DialogKind { ChooseFolder, ChooseFile, Alert };

struct DialogRequest {
    DialogKind kind = DialogKind::ChooseFolder;
    std::string prompt;       // the chooser's title, or the alert's message
    std::string startFolder;  // where a chooser opens; ignored by alerts
};

struct DialogAnswer {
    util::Status status = util::kNoError;  // -128 when cancelled or no dialog could be shown
    std::string path;                      // the chosen item's absolute path
    std::string detail;                    // why it failed, when it did not fail by the user's hand
};

DialogAnswer ShowDialog(const DialogRequest& request);

// An alert that only informs: shown as ShowDialog shows an alert (the script's "ok" or "cancel"
// answers it), or, where no dialog can be shown, written as one line on standard error so that a
// server still leaves a trace of it. What the user answered changes nothing.
void ShowNotice(const std::string& title, const std::string& text);

// A settings form: a window of pop-up menus, one per setting, accepted or cancelled as a whole.
struct FormChoice {
    std::string value;  // the word a script gives for it, e.g. "44100", "source", "stereo"
    std::string label;  // what a person sees, e.g. "44100 Hz", "Same as the sound"
};

struct FormControl {
    std::string name;                 // the script's name for the control, e.g. "rate"
    std::string label;                // e.g. "Sample rate"
    std::vector<FormChoice> choices;  // at least one
    size_t selected = 0;              // the choice shown first
};

struct FormRequest {
    std::string title;  // the window's title, e.g. "WAVE Settings"
    std::vector<FormControl> controls;
};

struct FormAnswer {
    util::Status status = util::kNoError;  // -128 (util::kUserCancelled) when cancelled or no dialog could be shown
    std::vector<size_t> selected;          // on success: the chosen index of every control, in order
    std::string detail;                    // why it failed, when not by the user's hand ("(...)" like DialogAnswer)
};

// A control without choices, or one whose first choice is not among them, is refused with -50
// before anything is shown.
FormAnswer ShowForm(const FormRequest& request);

}  // namespace vd::platform::ui
