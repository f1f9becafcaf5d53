// libvips, loaded when the first picture needs it and not with the plug-in (see
// platform/media/lazy_library.h). StartVips loads it before anything else; the rest of the
// graphics layer calls libvips's functions as usual.
#pragma once

#include <string_view>

namespace vd::platform {

// Loads libvips (and through it GLib and GObject) once per process and resolves every function the
// graphics layer calls. "" when that worked, else the reason (the same on every call).
// VANDREL_GRAPHICS_LAYER=unloadable makes the load fail while the start-up check still finds the
// files (tests use it).
std::string_view LoadVips();

}  // namespace vd::platform
