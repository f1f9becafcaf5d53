#include "util/line_break_escape.h"

namespace vd::util {

namespace {

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// Any number at or above this gives "?"; holding the value there keeps a long run of digits from
// overflowing.
constexpr unsigned kFirstUnrepresentable = 256;

}  // namespace

std::string EscapeLineBreaks(std::string_view text) {
    std::string escaped;
    escaped.reserve(text.size());
    for (const char c : text) {
        switch (c) {
            case '\r': escaped.append("&#13;"); break;
            case '\n': escaped.append("&#10;"); break;
            case '&': escaped.append("&#38;"); break;
            case '#': escaped.append("&#35;"); break;
            default: escaped.push_back(c);
        }
    }
    return escaped;
}

std::string UnescapeLineBreaks(std::string_view text) {
    std::string plain;
    plain.reserve(text.size());
    size_t i = 0;
    while (i < text.size()) {
        if (text[i] != '&' || i + 1 >= text.size() || text[i + 1] != '#') {
            plain.push_back(text[i++]);
            continue;
        }
        i += 2;
        if (i >= text.size() || !IsDigit(text[i])) {
            plain.append("&#");
            continue;
        }
        unsigned number = 0;
        while (i < text.size() && IsDigit(text[i])) {
            number = number * 10 + static_cast<unsigned>(text[i] - '0');
            if (number > kFirstUnrepresentable) number = kFirstUnrepresentable;
            ++i;
        }
        plain.push_back(number < kFirstUnrepresentable ? static_cast<char>(number) : '?');
        if (i < text.size() && text[i] == ';') ++i;
    }
    return plain;
}

}  // namespace vd::util
