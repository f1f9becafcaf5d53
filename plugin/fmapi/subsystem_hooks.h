// What a subsystem does when the host starts the plug-in, gives it idle time and shuts it down.
// Each subsystem owns the state these make; the frame walks the list of subsystems (frame/subsystems.cpp)
// in order at start-up and in reverse at shut-down. A hook a subsystem does not need stays null.
#pragma once

#include <cstdint>

namespace vd {

struct SubsystemHooks {
    const char* name;
    // Makes what the subsystem keeps between calls; false refuses the plug-in's start.
    bool (*startUp)() noexcept = nullptr;
    // The host's idle time, with the host's idle kind; called only while the plug-in is enabled.
    void (*idle)(uint8_t kind) noexcept = nullptr;
    // Releases what start-up made; safe after a failed start-up and when called twice.
    void (*shutDown)() noexcept = nullptr;
};

}  // namespace vd
