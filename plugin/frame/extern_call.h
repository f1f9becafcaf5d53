// Everything the host asks through the plug-in's entry point, by selector.
#pragma once

#include <fmx/callblock.h>

namespace vd {

// The block of the call in progress; only valid during that call.
extern ExternCallBlock* gExternCallBlock;

// 0 start-up, 1 idle (nothing to do yet), 4 shut-down, 5 configuration (no dialog on this build),
// 7 string request; every other selector is ignored.
void HandleExternCall(ExternCallBlock* block) noexcept;

}  // namespace vd
