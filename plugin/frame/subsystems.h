// The subsystems in the order they start; the playback pool and the recorder join the list when
// they exist.
#pragma once

#include <cstdint>

namespace vd {

// Each subsystem's start-up in order; at the first refusal the ones already started are shut down
// again and false is the answer.
bool StartUpSubsystems() noexcept;
void IdleSubsystems(uint8_t kind) noexcept;
// Every subsystem's shut-down, the last started first.
void ShutDownSubsystems() noexcept;

}  // namespace vd
