// Times that users type or pass as numbers, turned into seconds as unsigned 16.16 fixed point, the
// form in which every time travels inside the plug-in.
#pragma once

#include <cstdint>
#include <string_view>

#include "util/status_codes.h"

namespace vd::util {

// The largest time; also what every time of 32768 seconds or more becomes (and, for functions that
// take an end time, "to the end").
inline constexpr uint32_t kMaxFixedTime = 0x7FFFFFFF;

// Seconds (not negative, not NaN) times 65536, truncated; 2^31 and above give kMaxFixedTime.
uint32_t SecondsToFixed(double seconds);

// For fades, whose times may count back from the end of a sound: the size of the time and whether it
// was given as negative.
struct SignedFixedTime {
    uint32_t magnitude = 0;
    bool negative = false;
};

// A text of seconds, either a plain decimal number ("90", "1.5", ".25") or "[-][[hh:]mm:]ss[.fff]"
// ("1:30", "01:02:03.5"). Blanks around the text are ignored. In the colon forms the minutes and
// seconds after the first field have at most two digits and are below 60; only the last field may
// have a fraction. The fraction is read exactly, to any number of digits, then truncated.
// -50 for anything else, and for a negative text ("-0" included).
Status ParseTimeText(std::string_view text, uint32_t& fixed);

// As ParseTimeText, but a leading "-" is allowed and reported; "-0" is negative zero.
Status ParseSignedTimeText(std::string_view text, SignedFixedTime& time);

// A number of seconds from the host. -50 for NaN and for values below 0.
Status TimeFromSeconds(double seconds, uint32_t& fixed);

// A number of seconds that may be negative. -50 for NaN.
Status SignedTimeFromSeconds(double seconds, SignedFixedTime& time);

}  // namespace vd::util
