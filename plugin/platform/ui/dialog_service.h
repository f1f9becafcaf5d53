// The dialogs the plug-in shows: choosing a folder or a file, and alerts. Answered by a script of
// answers when VANDREL_UI_SCRIPT names one (unattended runs, tests); else by GTK when there is a
// display; else at once with -128 and the reason, so that a server never waits for a dialog no one
// can see.
#pragma once

#include <string>

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

}  // namespace vd::platform::ui
