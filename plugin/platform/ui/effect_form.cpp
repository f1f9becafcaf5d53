#include "platform/ui/effect_form.h"

#include "util/words.h"
#include "platform/ui/dialog_service.h"
#include "platform/ui/gtk_module_loader.h"
#include "platform/ui/scripted_dialogs.h"
#include "util/html_color.h"

#include <cctype>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace vd::platform::ui {

namespace {

using util::SameWord;
using util::NextWord;

constexpr const char* kNoDialogDetail = "(no dialog can be shown: no display, and no VANDREL_UI_SCRIPT)";

bool IsSet(const char* name) {
    const char* value = std::getenv(name);
    return value && value[0] != '\0';
}

EffectFormAnswer Failure(util::Status status, std::string detail) {
    return EffectFormAnswer{status, {}, detail.empty() ? std::string() : "(" + detail + ")"};
}

std::string Number(double value) {
    char text[32];
    std::snprintf(text, sizeof text, "%g", value);
    return text;
}

std::string FormWord(const EffectFormRequest& request) { return "the " + request.title + " dialog"; }

bool ReadValue(const EffectControl& control, std::string_view text, double& value) {
    if (control.colour) {
        util::RgbColor c;
        if (util::ParseHtmlColor(text, c) != util::kNoError) return false;
        value = double(uint32_t(c.red) << 16 | uint32_t(c.green) << 8 | c.blue);
        return true;
    }
    if (!text.empty() && text.front() == '+') text.remove_prefix(1);
    const auto [stop, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return error == std::errc() && stop == text.data() + text.size() && std::isfinite(value);
}

std::string ControlNames(const EffectFormRequest& request) {
    std::string names;
    for (const EffectControl& c : request.controls) names += (names.empty() ? "" : ", ") + c.name;
    return names.empty() ? "none" : names;
}

}  // namespace

EffectFormAnswer EffectAnswerFromLine(std::string_view line, const EffectFormRequest& request) {
    std::string_view rest = line;
    const std::string_view word = NextWord(rest);
    if (word == "cancel") return EffectFormAnswer{util::kUserCancelled, {}, {}};
    if (word != "ok")
        return Failure(util::kBadParameter,
                       "the UI script answers \"" + std::string(line) + "\" to " + FormWord(request));
    EffectFormAnswer answer;
    for (const EffectControl& c : request.controls) answer.values.push_back(c.value);
    for (std::string_view pair = NextWord(rest); !pair.empty(); pair = NextWord(rest)) {
        const size_t equals = pair.find('=');
        if (equals == std::string_view::npos || equals == 0)
            return Failure(util::kBadParameter, "the UI script gives \"" + std::string(pair) + "\" to " +
                                                    FormWord(request) + "; settings are given as name=value");
        const std::string_view name = pair.substr(0, equals), written = pair.substr(equals + 1);
        size_t index = 0;
        while (index < request.controls.size() && !SameWord(request.controls[index].name, name)) ++index;
        if (index == request.controls.size())
            return Failure(util::kBadParameter, "the UI script sets \"" + std::string(name) + "\", which " +
                                                    FormWord(request) + " does not have: " + ControlNames(request));
        const EffectControl& control = request.controls[index];
        double value = 0;
        if (!ReadValue(control, written, value))
            return Failure(util::kBadParameter, "the UI script gives " + control.name + " \"" + std::string(written) +
                                                    "\", which is no " + (control.colour ? "colour" : "number"));
        if (value < control.minimum || value > control.maximum)
            return Failure(util::kBadParameter, "the UI script gives " + control.name + " " + std::string(written) +
                                                    "; it goes from " + Number(control.minimum) + " to " +
                                                    Number(control.maximum));
        answer.values[index] = value;
    }
    return answer;
}

EffectFormAnswer ShowEffectForm(const EffectFormRequest& request) {
    if (IsSet(kScriptVariable)) {
        std::string line;
        DialogAnswer next = NextScriptAnswer(std::getenv(kScriptVariable), FormWord(request), line);
        if (next.status != util::kNoError) return EffectFormAnswer{next.status, {}, std::move(next.detail)};
        return EffectAnswerFromLine(line, request);
    }
    if (IsSet("DISPLAY") || IsSet("WAYLAND_DISPLAY")) return ShowGtkEffectForm(request);
    return EffectFormAnswer{util::kUserCancelled, {}, kNoDialogDetail};
}

}  // namespace vd::platform::ui
