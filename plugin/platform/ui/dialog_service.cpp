#include "platform/ui/dialog_service.h"

#include <cstdio>
#include <cstdlib>

#include "util/status_codes.h"
#include "platform/ui/gtk_module_loader.h"
#include "platform/ui/scripted_dialogs.h"

namespace vd::platform::ui {

namespace {

constexpr const char* kNoDialogDetail = "(no dialog can be shown: no display, and no VANDREL_UI_SCRIPT)";

bool IsSet(const char* name) {
    const char* value = std::getenv(name);
    return value && value[0] != '\0';
}

bool DisplayPresent() { return IsSet("DISPLAY") || IsSet("WAYLAND_DISPLAY"); }

// A form the caller built wrong would show an empty menu or index past its choices; it is refused
// the same way whichever side would have answered it.
std::string FormProblem(const FormRequest& request) {
    for (const FormControl& control : request.controls) {
        if (control.choices.empty()) return "(the settings form's control \"" + control.name + "\" offers no choices)";
        if (control.selected >= control.choices.size()) {
            return "(the settings form's control \"" + control.name + "\" starts on a choice it does not have)";
        }
    }
    return {};
}

}  // namespace

DialogAnswer ShowDialog(const DialogRequest& request) {
    if (IsSet(kScriptVariable)) return AnswerFromScript(std::getenv(kScriptVariable), request);
    if (DisplayPresent()) return ShowGtkDialog(request);
    return DialogAnswer{util::kUserCancelled, {}, kNoDialogDetail};
}

void ShowNotice(const std::string& title, const std::string& text) {
    if (!IsSet(kScriptVariable) && !DisplayPresent()) {
        std::fprintf(stderr, "Vandrel: %s %s\n", title.c_str(), text.c_str());
        return;
    }
    ShowDialog(DialogRequest{DialogKind::Alert, title + "\n\n" + text, {}});
}

FormAnswer ShowForm(const FormRequest& request) {
    if (std::string problem = FormProblem(request); !problem.empty()) {
        return FormAnswer{util::kBadParameter, {}, std::move(problem)};
    }
    if (IsSet(kScriptVariable)) return AnswerFromScript(std::getenv(kScriptVariable), request);
    if (DisplayPresent()) return ShowGtkForm(request);
    return FormAnswer{util::kUserCancelled, {}, kNoDialogDetail};
}

}  // namespace vd::platform::ui
