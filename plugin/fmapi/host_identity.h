// What the host said about itself at start-up that the subsystems need: its interface version,
// which tells which calls of the host API it has (file names in containers came with 51).
#pragma once

#include <cstdint>

namespace vd::fmapi {

// Set by the frame once the host is accepted; 0 before.
void SetHostInterfaceVersion(int16_t version) noexcept;
int16_t HostInterfaceVersion() noexcept;

// Whether the host keeps the name of an inserted file beside it ("FNAM" data).
inline bool HostKeepsFileNames() noexcept { return HostInterfaceVersion() > 50; }

}  // namespace vd::fmapi
