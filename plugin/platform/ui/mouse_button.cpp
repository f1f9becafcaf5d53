#include "platform/ui/mouse_button.h"

#include "platform/ui/gtk_module_loader.h"

#include <cstdlib>

namespace vd::platform::ui {

namespace {

bool IsSet(const char* name) {
    const char* value = std::getenv(name);
    return value && value[0] != '\0';
}

}  // namespace

bool MouseButtonDown() {
    // GTK is loaded only where there is a display to ask; a server never pays for it.
    if (!IsSet("DISPLAY") && !IsSet("WAYLAND_DISPLAY")) return false;
    return GtkMouseButtonDown() == 1;
}

}  // namespace vd::platform::ui
