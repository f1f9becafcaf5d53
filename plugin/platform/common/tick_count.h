// The system tick counter: sixtieths of a second since an arbitrary start, from the monotonic
// clock, so it never runs backwards when the wall clock is set.
#pragma once

#include <cstdint>

namespace vd::sound {

uint32_t TickCount();

}  // namespace vd::sound
