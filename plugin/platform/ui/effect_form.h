// An effect's settings form: a slider or a colour per parameter and a live preview of the picture,
// answered by a person (GTK), a script (VANDREL_UI_SCRIPT) or, with neither, at once with -128.
//
// A script answers it as it answers settings forms: "cancel", or "ok" and any number of
// name=value pairs ("ok radius=2.5", "ok color=#a05020 amount=0.25"), each value a number inside
// the slider's range or, for a colour, "#rrggbb" or an HTML colour name.
#pragma once

#include "util/status_codes.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace vd::platform::ui {

struct EffectControl {
    std::string name;   // the script's name, e.g. "radius"
    std::string label;  // what a person sees, e.g. "Radius"
    bool colour = false;
    double minimum = 0, maximum = 1, step = 0.01;
    double value = 0;  // the start; a colour as 0xRRGGBB
};

struct PreviewFrame {
    int width = 0, height = 0;
    std::vector<uint8_t> rgb;  // 8-bit RGB rows without padding
};

// Draws the preview for the controls' values (in the controls' order); false when it cannot.
using PreviewRenderer = std::function<bool(const std::vector<double>& values, PreviewFrame& frame)>;

struct EffectFormRequest {
    std::string title;
    std::vector<EffectControl> controls;
    PreviewRenderer preview;  // empty: no preview
};

struct EffectFormAnswer {
    util::Status status = util::kNoError;  // -128 when cancelled or no form could be shown; -50 for a bad script answer
    std::vector<double> values;            // on success: every control's value, in order
    std::string detail;                    // why it failed, when not by the user's hand ("(...)")
};

EffectFormAnswer ShowEffectForm(const EffectFormRequest& request);

// The answer one script line gives to the form.
EffectFormAnswer EffectAnswerFromLine(std::string_view line, const EffectFormRequest& request);

}  // namespace vd::platform::ui
