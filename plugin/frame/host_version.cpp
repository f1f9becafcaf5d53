#include "frame/host_version.h"

#include "fmapi/args/text_conversion.h"

#include <array>
#include <cstdlib>
#include <limits>

namespace vd {

namespace {

constexpr size_t kVersionTextUnits = 20;

// atoi's reading (blanks, a sign, digits), but saturating instead of overflowing, and 0 past the end.
long LeadingNumber(std::string_view text, size_t from) {
    if (from >= text.size()) return 0;
    size_t i = from;
    while (i < text.size() && (text[i] == ' ' || (text[i] >= '\t' && text[i] <= '\r'))) ++i;
    bool negative = false;
    if (i < text.size() && (text[i] == '+' || text[i] == '-')) negative = text[i++] == '-';
    long value = 0;
    for (; i < text.size() && text[i] >= '0' && text[i] <= '9'; ++i) {
        if (value > (std::numeric_limits<long>::max() - 9) / 10) {
            value = std::numeric_limits<long>::max();
            break;
        }
        value = value * 10 + (text[i] - '0');
    }
    return negative ? -value : value;
}

struct VersionRow {
    std::string_view prefix;  // the figure follows one character after it
    uint16_t base;
};

constexpr std::array kModernHosts{
    VersionRow{"8.0", 800},   VersionRow{"8.1", 810},   VersionRow{"8.5", 850},
    VersionRow{"9.0", 900},   VersionRow{"9.1", 910},   VersionRow{"10.0", 1000},
    VersionRow{"10.1", 1010}, VersionRow{"11.0", 1100},
};

uint16_t WithFigure(uint16_t base, std::string_view version, size_t prefixLength) {
    auto figure = static_cast<uint16_t>(static_cast<unsigned long>(LeadingNumber(version, prefixLength + 1)));
    return static_cast<uint16_t>(base + figure);
}

}  // namespace

uint16_t HostVersionCode(int16_t interfaceVersion, std::string_view versionText) {
    std::string_view version = versionText;
    if (auto blank = version.find(' '); blank != std::string_view::npos) version.remove_prefix(blank + 1);

    switch (interfaceVersion) {
    case 11:
    case 12: return 4;
    case 14: return 5;
    case 15:
    case 16: return 55;
    case 17: return version == "6.0" ? 601 : 0;
    case 50: return version.substr(0, 3) == "7.0" ? WithFigure(700, version, 3) : 0;
    default: break;
    }
    if (interfaceVersion > 50)
        for (const auto& row : kModernHosts)
            if (version.substr(0, row.prefix.size()) == row.prefix)
                return WithFigure(row.base, version, row.prefix.size());
    return 0;
}

bool IsAcceptedHostVersion(uint16_t code) {
    return code == 4 || code == 5 || code == 55 || code == 601 || (code >= 701 && code <= 799) ||
           (code >= 801 && code <= 859) || (code >= 900 && code <= 999) || (code >= 1000 && code <= 1009) ||
           (code >= 1100 && code <= 1199);
}

std::string HostVersionText(const char16_t* units) {
    std::u16string text;
    for (size_t i = 0; units && i < kVersionTextUnits && units[i]; ++i) text.push_back(units[i]);
    if (text.empty()) {
        const char* fromHost = std::getenv("VDHOST_VERSION_TEXT");
        return fromHost ? std::string(fromHost) : std::string();
    }
    return Utf16ToUtf8(text).value_or(std::string());
}

}  // namespace vd
