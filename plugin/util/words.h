// Words of the texts a calculation passes: a key such as "Version" or "radius=2", compared as a
// person types them, in any case.
#pragma once

#include <cctype>
#include <string_view>

namespace vd::util {

// Whether a and b are the same word, ASCII letters in any case.
inline bool SameWord(std::string_view a, std::string_view b) {
    if (a.size() != b.size()) return false;
    for (size_t i = 0; i < a.size(); ++i)
        if (std::tolower(static_cast<unsigned char>(a[i])) != std::tolower(static_cast<unsigned char>(b[i])))
            return false;
    return true;
}

// The next white-space-separated word of text, which is left after it.
inline std::string_view NextWord(std::string_view& text) {
    while (!text.empty() && std::isspace(static_cast<unsigned char>(text.front()))) text.remove_prefix(1);
    size_t end = 0;
    while (end < text.size() && !std::isspace(static_cast<unsigned char>(text[end]))) ++end;
    const std::string_view word = text.substr(0, end);
    text.remove_prefix(end);
    return word;
}

}  // namespace vd::util
