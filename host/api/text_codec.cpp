#include "text_codec.h"

namespace vdhost {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

void appendUtf16(std::u16string& out, char32_t c) {
    if (c < 0x10000) {
        out.push_back(static_cast<char16_t>(c));
    } else {
        c -= 0x10000;
        out.push_back(static_cast<char16_t>(0xD800 + (c >> 10)));
        out.push_back(static_cast<char16_t>(0xDC00 + (c & 0x3FF)));
    }
}

void appendUtf8(std::string& out, char32_t c) {
    if (c < 0x80) {
        out.push_back(static_cast<char>(c));
    } else if (c < 0x800) {
        out.push_back(static_cast<char>(0xC0 | (c >> 6)));
        out.push_back(static_cast<char>(0x80 | (c & 0x3F)));
    } else if (c < 0x10000) {
        out.push_back(static_cast<char>(0xE0 | (c >> 12)));
        out.push_back(static_cast<char>(0x80 | ((c >> 6) & 0x3F)));
        out.push_back(static_cast<char>(0x80 | (c & 0x3F)));
    } else {
        out.push_back(static_cast<char>(0xF0 | (c >> 18)));
        out.push_back(static_cast<char>(0x80 | ((c >> 12) & 0x3F)));
        out.push_back(static_cast<char>(0x80 | ((c >> 6) & 0x3F)));
        out.push_back(static_cast<char>(0x80 | (c & 0x3F)));
    }
}

// Decodes the code point at units[i], advancing i; lone surrogates give the replacement character.
char32_t nextCodePoint(std::u16string_view units, size_t& i) {
    char16_t u = units[i++];
    if (u >= 0xD800 && u <= 0xDBFF) {
        if (i < units.size() && units[i] >= 0xDC00 && units[i] <= 0xDFFF) {
            char32_t c = 0x10000 + ((static_cast<char32_t>(u) - 0xD800) << 10) + (units[i] - 0xDC00);
            ++i;
            return c;
        }
        return kReplacement;
    }
    if (u >= 0xDC00 && u <= 0xDFFF) return kReplacement;
    return u;
}

size_t utf8Length(char32_t c) { return c < 0x80 ? 1 : c < 0x800 ? 2 : c < 0x10000 ? 3 : 4; }

}  // namespace

std::u16string utf8ToUtf16(std::string_view bytes) {
    std::u16string out;
    out.reserve(bytes.size());
    size_t i = 0;
    while (i < bytes.size()) {
        auto b = static_cast<unsigned char>(bytes[i]);
        if (b < 0x80) {
            out.push_back(b);
            ++i;
            continue;
        }
        size_t need = b >= 0xF0 && b <= 0xF4 ? 3 : b >= 0xE0 ? 2 : b >= 0xC2 && b < 0xE0 ? 1 : 0;
        if (b > 0xF4) need = 0;
        char32_t c = need == 3 ? (b & 0x07) : need == 2 ? (b & 0x0F) : (b & 0x1F);
        size_t j = 1;
        for (; need && j <= need; ++j) {
            if (i + j >= bytes.size()) break;
            auto cb = static_cast<unsigned char>(bytes[i + j]);
            if ((cb & 0xC0) != 0x80) break;
            c = (c << 6) | (cb & 0x3F);
        }
        bool complete = need && j == need + 1;
        bool overlong = (need == 2 && c < 0x800) || (need == 3 && c < 0x10000);
        bool invalid = c > 0x10FFFF || (c >= 0xD800 && c <= 0xDFFF);
        if (!complete || overlong || invalid) {
            // One replacement for the lead byte and the continuation bytes that belonged to it.
            out.push_back(static_cast<char16_t>(kReplacement));
            i += j;
            continue;
        }
        appendUtf16(out, c);
        i += need + 1;
    }
    return out;
}

std::u16string latin1ToUtf16(std::string_view bytes) {
    std::u16string out(bytes.size(), u'\0');
    for (size_t i = 0; i < bytes.size(); ++i) out[i] = static_cast<unsigned char>(bytes[i]);
    return out;
}

std::string utf16ToUtf8(std::u16string_view units) {
    std::string out;
    out.reserve(units.size());
    for (size_t i = 0; i < units.size();) appendUtf8(out, nextCodePoint(units, i));
    return out;
}

std::string utf16ToLatin1(std::u16string_view units) {
    std::string out;
    out.reserve(units.size());
    for (size_t i = 0; i < units.size();) {
        char32_t c = nextCodePoint(units, i);
        out.push_back(c < 0x100 ? static_cast<char>(c) : '?');
    }
    return out;
}

std::string utf16ToUtf8Limited(std::u16string_view units, size_t limit) {
    std::string out;
    for (size_t i = 0; i < units.size();) {
        char32_t c = nextCodePoint(units, i);
        if (out.size() + utf8Length(c) > limit) break;
        appendUtf8(out, c);
    }
    return out;
}

}  // namespace vdhost
