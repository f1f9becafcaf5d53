// Whether a mouse button is held down, asked of the display the host runs on. Without a display
// (a server, a script) no button can be down.
#pragma once

namespace vd::platform::ui {

// True only when a display is present and says a button is down now.
bool MouseButtonDown();

}  // namespace vd::platform::ui
