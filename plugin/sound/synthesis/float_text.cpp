#include "sound/synthesis/float_text.h"

#include <cstdlib>
#include <locale.h>
#include <string>

namespace vd::sound {

namespace {

// One "C" locale for the process, made on first use and kept: strtof_l needs one, and making it per
// call would cost more than the parse.
locale_t CLocale() {
    static const locale_t c = newlocale(LC_ALL_MASK, "C", locale_t(0));
    return c;
}

}  // namespace

std::optional<float> ScanFloat(std::string_view text) {
    const std::string terminated(text);
    const char* start = terminated.c_str();
    char* end = nullptr;
    const locale_t c = CLocale();
    const float value = c ? strtof_l(start, &end, c) : std::strtof(start, &end);
    if (end == start) return std::nullopt;
    return value;
}

}  // namespace vd::sound
