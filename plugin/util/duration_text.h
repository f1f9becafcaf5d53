// Durations as "hhh:mm:ss.mmm".
#pragma once

#include <cstdint>
#include <string>

namespace vd::util {

// value / scale seconds. Hours wrap at 60 (61 hours show as "001") and a fraction that rounds up to
// a whole second shows as "1000" milliseconds: scripts that parse these texts were written against
// exactly this layout, so it stays. A scale of 0 has no duration and gives the zero text.
std::string FormatDuration(int32_t value, int32_t scale);

}  // namespace vd::util
