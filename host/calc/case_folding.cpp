#include "case_folding.h"

#include <algorithm>

namespace vdhost::calc {

namespace {
// Latin-1 has upper-case letters at C0..DE and their lower-case partners 0x20 above, except for the
// multiplication and division signs at D7 and F7.
constexpr char16_t kTimes = 0x00D7;
constexpr char16_t kYDiaeresis = 0x00FF;
constexpr char16_t kCapitalYDiaeresis = 0x0178;
}  // namespace

char16_t lowerCase(char16_t c) {
    if (c >= u'A' && c <= u'Z') return static_cast<char16_t>(c + 0x20);
    if (c >= 0x00C0 && c <= 0x00DE && c != kTimes) return static_cast<char16_t>(c + 0x20);
    if (c == kCapitalYDiaeresis) return kYDiaeresis;
    return c;
}

char16_t upperCase(char16_t c) {
    if (c >= u'a' && c <= u'z') return static_cast<char16_t>(c - 0x20);
    if (c >= 0x00E0 && c <= 0x00FE && c != kTimes + 0x20) return static_cast<char16_t>(c - 0x20);
    if (c == kYDiaeresis) return kCapitalYDiaeresis;
    return c;
}

std::u16string lowerCase(std::u16string_view text) {
    std::u16string out(text);
    for (auto& c : out) c = lowerCase(c);
    return out;
}

std::u16string upperCase(std::u16string_view text) {
    std::u16string out(text);
    for (auto& c : out) c = upperCase(c);
    return out;
}

bool equalIgnoringCase(std::u16string_view a, std::u16string_view b) {
    return a.size() == b.size() && compareIgnoringCase(a, b) == 0;
}

int compareIgnoringCase(std::u16string_view a, std::u16string_view b) {
    size_t n = std::min(a.size(), b.size());
    for (size_t i = 0; i < n; ++i) {
        char16_t x = lowerCase(a[i]), y = lowerCase(b[i]);
        if (x != y) return x < y ? -1 : 1;
    }
    if (a.size() == b.size()) return 0;
    return a.size() < b.size() ? -1 : 1;
}

}  // namespace vdhost::calc
