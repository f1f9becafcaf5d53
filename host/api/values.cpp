#include "values.h"

#include "text_codec.h"

#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstring>

namespace vdhost {

FMX_Data makeText(std::u16string text) {
    FMX_Data d;
    d.type = FMX_TYPE_TEXT;
    d.text.units = std::move(text);
    return d;
}

FMX_Data makeTextUtf8(std::string_view text) { return makeText(utf8ToUtf16(text)); }

FMX_Data makeNumber(double value) {
    FMX_Data d;
    d.type = FMX_TYPE_NUMBER;
    d.number.value = value;
    return d;
}

FMX_Data makeBoolean(bool value) {
    FMX_Data d;
    d.type = FMX_TYPE_BOOLEAN;
    d.number.value = value ? 1 : 0;
    return d;
}

FMX_Data makeContainer(FMX_BinaryData binary, std::u16string ownText) {
    FMX_Data d;
    d.type = FMX_TYPE_BINARY;
    d.binary = std::move(binary);
    d.text.units = std::move(ownText);
    return d;
}

bool isContainer(const FMX_Data& d) { return d.type == FMX_TYPE_BINARY; }
bool isNumeric(const FMX_Data& d) { return d.type == FMX_TYPE_NUMBER || d.type == FMX_TYPE_BOOLEAN; }

std::u16string formatNumber(double value) {
    if (value == 0) return u"0";  // also folds -0
    char buf[64];
    double mag = std::fabs(value);
    if (value == std::trunc(value) && mag < 1e15) {
        auto r = std::to_chars(buf, buf + sizeof buf, static_cast<long long>(value));
        return std::u16string(buf, r.ptr);
    }
    int n;
    if (mag >= 1e-5 && mag < 1e15) {
        // 15 significant digits in fixed notation, trailing zeros dropped.
        int decimals = 15 - 1 - static_cast<int>(std::floor(std::log10(mag)));
        if (decimals < 0) decimals = 0;
        n = std::snprintf(buf, sizeof buf, "%.*f", decimals, value);
        // Trailing zeros (and a bare decimal point) go; the digits stay in buf.
        if (std::memchr(buf, '.', static_cast<size_t>(n))) {
            while (n > 0 && buf[n - 1] == '0') --n;
            if (n > 0 && buf[n - 1] == '.') --n;
        }
        if (n == 2 && buf[0] == '-' && buf[1] == '0') return u"0";
        return std::u16string(buf, buf + n);
    }
    n = std::snprintf(buf, sizeof buf, "%.15g", value);
    return std::u16string(buf, buf + n);
}

std::optional<double> parseNumber(std::u16string_view text) {
    std::string digits;
    bool negative = false, seenDigit = false, seenPoint = false;
    for (char16_t c : text) {
        if (c >= u'0' && c <= u'9') {
            digits.push_back(static_cast<char>(c));
            seenDigit = true;
        } else if (c == u'.' && !seenPoint) {
            digits.push_back('.');
            seenPoint = true;
        } else if (c == u'-' && !seenDigit && !seenPoint) {
            negative = true;
        }
    }
    if (!seenDigit) return std::nullopt;
    if (digits.front() == '.') digits.insert(digits.begin(), '0');
    double v = 0;
    auto r = std::from_chars(digits.data(), digits.data() + digits.size(), v);
    if (r.ec != std::errc()) return std::nullopt;
    return negative ? -v : v;
}

const FMX_Text& textOf(const FMX_Data& d) {
    if (!isNumeric(d)) return d.text;
    if (!d.textCache) d.textCache = FMX_Text{formatNumber(d.number.value)};
    return *d.textCache;
}

double numberOf(const FMX_Data& d) {
    if (isNumeric(d)) return d.number.value;
    if (!d.numberCache) d.numberCache = FMX_FixPt{parseNumber(d.text.units).value_or(0)};
    return d.numberCache->value;
}

bool booleanOf(const FMX_Data& d) { return numberOf(d) != 0; }

bool emptyOf(const FMX_Data& d) {
    if (isNumeric(d)) return false;
    if (isContainer(d)) return d.binary.streams.empty() && d.text.units.empty();
    return d.text.units.empty();
}

std::string utf8Of(const FMX_Data& d) { return utf16ToUtf8(textOf(d).units); }

std::string fourCharText(uint32_t code) {
    std::string s(4, ' ');
    for (int i = 0; i < 4; ++i) s[i] = static_cast<char>((code >> (24 - 8 * i)) & 0xFF);
    return s;
}

uint32_t fourCharCode(std::string_view text) {
    uint32_t code = 0;
    for (size_t i = 0; i < 4 && i < text.size(); ++i)
        code = (code << 8) | static_cast<unsigned char>(text[i]);
    return code;
}

}  // namespace vdhost
