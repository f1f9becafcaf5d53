// Showing a dialog or a settings form through the GTK module of the bundle.
#pragma once

#include <string>

#include "platform/ui/dialog_service.h"
#include "platform/ui/effect_form.h"

namespace vd::platform::ui {

inline constexpr const char* kGtkModuleName = "ui-gtk.so";

// The module in the Resources folder of the bundle this code was loaded from.
std::string GtkModulePath();

// Loads the module on first use (and keeps it: GTK cannot be unloaded) and shows the dialog.
// A module that is missing or of another version, or a display GTK cannot open, answers -128 with
// the reason.
DialogAnswer ShowGtkDialog(const DialogRequest& request);
FormAnswer ShowGtkForm(const FormRequest& request);
EffectFormAnswer ShowGtkEffectForm(const EffectFormRequest& request);
// 1 while a mouse button is down, 0 while none is, -1 when the module or the display cannot tell.
int GtkMouseButtonDown();

}  // namespace vd::platform::ui
