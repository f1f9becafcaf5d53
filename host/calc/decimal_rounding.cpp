#include "decimal_rounding.h"

#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace vdhost::calc {

namespace {
constexpr int kSignificantDigits = 15;
}

double roundToPlaces(double value, int places) {
    if (value == 0 || !std::isfinite(value)) return value;
    // d.dddddddddddddde±x: the 15 significant digits and the decimal exponent of the first one.
    char buf[64];
    std::snprintf(buf, sizeof buf, "%.*e", kSignificantDigits - 1, std::fabs(value));
    std::string digits;
    const char* p = buf;
    for (; *p && *p != 'e'; ++p)
        if (*p != '.') digits.push_back(*p);
    int exponent = std::atoi(p + 1);

    // How many of the digits lie before the rounding place.
    int keep = exponent + 1 + places;
    if (keep >= kSignificantDigits) return value;
    if (keep < 0) return 0;

    std::string kept = keep == 0 ? std::string("0") : digits.substr(0, static_cast<size_t>(keep));
    if (digits[static_cast<size_t>(keep)] >= '5') {
        int i = static_cast<int>(kept.size()) - 1;
        for (; i >= 0 && kept[static_cast<size_t>(i)] == '9'; --i) kept[static_cast<size_t>(i)] = '0';
        if (i < 0)
            kept.insert(kept.begin(), '1');
        else
            ++kept[static_cast<size_t>(i)];
    }
    // The kept digits are an integer count of units of 10^-places.
    std::string text = kept + "e" + std::to_string(-places);
    double rounded = 0;
    std::from_chars(text.data(), text.data() + text.size(), rounded);
    return value < 0 ? -rounded : rounded;
}

}  // namespace vdhost::calc
