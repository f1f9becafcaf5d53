#include "util/duration_text.h"

#include <cmath>
#include <cstdio>

namespace vd::util {

std::string FormatDuration(int32_t value, int32_t scale) {
    const double seconds = scale == 0 ? 0.0 : static_cast<double>(value) / static_cast<double>(scale);
    const double milliseconds = std::rint((seconds - std::floor(seconds)) * 1000.0);
    const double wholeSeconds = std::floor(std::fmod(seconds, 60.0));
    const double minutes = std::floor(std::fmod(seconds / 60.0, 60.0));
    const double hours = std::floor(std::fmod(seconds / 3600.0, 60.0));
    char text[64];
    std::snprintf(text, sizeof text, "%03.0lf:%02.0lf:%02.0lf.%03.0lf", hours, minutes, wholeSeconds, milliseconds);
    return text;
}

}  // namespace vd::util
