#include "platform/ui/dialog_service.h"

#include <cstdlib>

#include "util/status_codes.h"
#include "platform/ui/gtk_module_loader.h"
#include "platform/ui/scripted_dialogs.h"

namespace vd::platform::ui {

namespace {

bool IsSet(const char* name) {
    const char* value = std::getenv(name);
    return value && value[0] != '\0';
}

}  // namespace

DialogAnswer ShowDialog(const DialogRequest& request) {
    if (IsSet(kScriptVariable)) return AnswerFromScript(std::getenv(kScriptVariable), request);
    if (IsSet("DISPLAY") || IsSet("WAYLAND_DISPLAY")) return ShowGtkDialog(request);
    DialogAnswer answer;
    answer.status = util::kUserCancelled;
    answer.detail = "(no dialog can be shown: no display, and no VANDREL_UI_SCRIPT)";
    return answer;
}

}  // namespace vd::platform::ui
