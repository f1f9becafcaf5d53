// Reading the arguments of built-in functions.
#pragma once

#include "api/values.h"

#include <cmath>
#include <string_view>

namespace vdhost::calc {

inline std::u16string_view textArgument(const FMX_Data& d) { return textOf(d).units; }

// A count or position: the number truncated toward zero, held to a range where arithmetic on it
// cannot overflow (no text is anywhere near that long).
inline long long wholeArgument(const FMX_Data& d) {
    constexpr double kLimit = 1e15;
    double n = std::trunc(numberOf(d));
    if (std::isnan(n)) return 0;  // only a plug-in could hand one over
    if (n > kLimit) return static_cast<long long>(kLimit);
    if (n < -kLimit) return static_cast<long long>(-kLimit);
    return static_cast<long long>(n);
}

}  // namespace vdhost::calc
