// The legacy result text: the last message of the frame's own argument checks, kept in one host
// memory block so that a host which shows plug-in messages can read it. The block is made on first
// use through the memory callbacks the host handed over at start-up.
#pragma once

#include <fmx/callblock.h>

#include <string>
#include <string_view>

namespace vd {

// The call block is only valid during one call, so the callbacks are copied out of it.
void KeepMemoryCallbacks(const ExternCallBlock& block) noexcept;

// Stores "$code:message" (no terminator). Does nothing when the host gave no callbacks or refuses
// the memory: the caller's status carries the failure anyway.
void SetLegacyResult(long code, std::string_view message) noexcept;

// The block, or none before the first message (tests read it through the host).
FMX_MemHandle LegacyResultBlock() noexcept;
// What the block holds now ("" without a block).
std::string LegacyResultText();

// Gives the block back at shut-down, while the callbacks are still the host's.
void ReleaseLegacyResult() noexcept;

}  // namespace vd
