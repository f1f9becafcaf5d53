// Colours as web pages write them, for waveform and background colours.
#pragma once

#include <cstdint>
#include <string_view>

#include "util/status_codes.h"

namespace vd::util {

struct RgbColor {
    uint8_t red = 0;
    uint8_t green = 0;
    uint8_t blue = 0;
    friend bool operator==(const RgbColor&, const RgbColor&) = default;
};

// "#RRGGBB", "RRGGBB", "#RGB" (each digit doubled, as in CSS) or one of the sixteen basic HTML colour
// names (black, silver, gray, white, maroon, red, purple, fuchsia, green, lime, olive, yellow, navy,
// blue, teal, aqua); letters in any case, blanks around the text ignored. -50 for anything else.
Status ParseHtmlColor(std::string_view text, RgbColor& color);

}  // namespace vd::util
