#include "fmapi/args/text_conversion.h"

#include <cstdint>

namespace vd {

namespace {

bool IsContinuation(unsigned char c) { return (c & 0xC0) == 0x80; }

}  // namespace

std::optional<std::u16string> Utf8ToUtf16(std::string_view utf8) {
    std::u16string out;
    out.reserve(utf8.size());
    size_t i = 0;
    while (i < utf8.size()) {
        auto lead = static_cast<unsigned char>(utf8[i]);
        uint32_t cp;
        size_t extra;
        uint32_t minimum;
        if (lead < 0x80) {
            cp = lead, extra = 0, minimum = 0;
        } else if ((lead & 0xE0) == 0xC0) {
            cp = lead & 0x1F, extra = 1, minimum = 0x80;
        } else if ((lead & 0xF0) == 0xE0) {
            cp = lead & 0x0F, extra = 2, minimum = 0x800;
        } else if ((lead & 0xF8) == 0xF0) {
            cp = lead & 0x07, extra = 3, minimum = 0x10000;
        } else {
            return std::nullopt;
        }
        if (i + extra >= utf8.size()) return std::nullopt;  // cut off inside a character
        for (size_t k = 1; k <= extra; ++k) {
            auto c = static_cast<unsigned char>(utf8[i + k]);
            if (!IsContinuation(c)) return std::nullopt;
            cp = cp << 6 | (c & 0x3F);
        }
        // Overlong forms, surrogates and values past U+10FFFF are not UTF-8.
        if (cp < minimum || cp > 0x10FFFF || (cp >= 0xD800 && cp <= 0xDFFF)) return std::nullopt;
        if (cp >= 0x10000) {
            cp -= 0x10000;
            out.push_back(static_cast<char16_t>(0xD800 + (cp >> 10)));
            out.push_back(static_cast<char16_t>(0xDC00 + (cp & 0x3FF)));
        } else {
            out.push_back(static_cast<char16_t>(cp));
        }
        i += extra + 1;
    }
    return out;
}

std::optional<std::string> Utf16ToUtf8(std::u16string_view units) {
    if (units.size() > kUtf16ToUtf8MaxUnits) return std::nullopt;
    std::string out;
    out.reserve(units.size() * 3);
    for (size_t i = 0; i < units.size(); ++i) {
        uint32_t cp = units[i];
        if (cp >= 0xD800 && cp <= 0xDBFF) {
            if (i + 1 >= units.size() || units[i + 1] < 0xDC00 || units[i + 1] > 0xDFFF) return std::nullopt;
            cp = 0x10000 + ((cp - 0xD800) << 10) + (units[i + 1] - 0xDC00);
            ++i;
        } else if (cp >= 0xDC00 && cp <= 0xDFFF) {
            return std::nullopt;
        }
        if (cp < 0x80) {
            out.push_back(static_cast<char>(cp));
        } else if (cp < 0x800) {
            out.push_back(static_cast<char>(0xC0 | cp >> 6));
            out.push_back(static_cast<char>(0x80 | (cp & 0x3F)));
        } else if (cp < 0x10000) {
            out.push_back(static_cast<char>(0xE0 | cp >> 12));
            out.push_back(static_cast<char>(0x80 | (cp >> 6 & 0x3F)));
            out.push_back(static_cast<char>(0x80 | (cp & 0x3F)));
        } else {
            out.push_back(static_cast<char>(0xF0 | cp >> 18));
            out.push_back(static_cast<char>(0x80 | (cp >> 12 & 0x3F)));
            out.push_back(static_cast<char>(0x80 | (cp >> 6 & 0x3F)));
            out.push_back(static_cast<char>(0x80 | (cp & 0x3F)));
        }
    }
    return out;
}

void CutAtReturn(std::string& text) {
    auto cr = text.find('\r');
    if (cr != std::string::npos) text.resize(cr);
}

}  // namespace vd
