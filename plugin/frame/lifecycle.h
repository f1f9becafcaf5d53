// Start-up and shut-down of the plug-in, and the state they set up for everything else.
#pragma once

#include <fmx/callblock.h>

#include <cstdint>
#include <optional>
#include <string>

namespace vd {

inline constexpr intptr_t kPluginInterfaceVersion = 52;

extern bool gPluginEnabled;           // start-up completed; shut-down clears it first
extern uint16_t gHostVersionCode;     // HostVersionCode() of this host, 0 when unknown
extern int16_t gHostInterfaceVersion; // kept once the host was accepted
extern std::string gHostVersionText;  // as the host gave it (or its stand-in, see host_version.h)

// The answer to the start request: 52 when the plug-in runs, -1 for an interface version outside
// 50..255, -2 for every other refusal (host version, media layer, a sound function not registered).
intptr_t StartUp(const ExternCallBlock& block) noexcept;

// Disables the plug-in, unregisters every id from the highest down to 1, and releases what
// start-up made. Safe after a failed start-up and when called twice.
void ShutDown() noexcept;

}  // namespace vd
