// Letter case for names and text comparisons. Calculations compare text without regard to case;
// folding covers ASCII and Latin-1 letters, which is what names and the host's texts use in practice.
#pragma once

#include <string>
#include <string_view>

namespace vdhost::calc {

char16_t lowerCase(char16_t c);
char16_t upperCase(char16_t c);

std::u16string lowerCase(std::u16string_view text);
std::u16string upperCase(std::u16string_view text);

bool equalIgnoringCase(std::u16string_view a, std::u16string_view b);
// Negative, zero or positive, as a compares to b unit by unit after folding.
int compareIgnoringCase(std::u16string_view a, std::u16string_view b);

// For ordered containers keyed by names; transparent, so lookups take string views.
struct LessIgnoringCase {
    using is_transparent = void;
    bool operator()(std::u16string_view a, std::u16string_view b) const {
        return compareIgnoringCase(a, b) < 0;
    }
};

}  // namespace vdhost::calc
