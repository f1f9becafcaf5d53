#include "names.h"

namespace vdhost {

namespace {
bool isLetter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_'; }
bool isDigit(char c) { return c >= '0' && c <= '9'; }
}  // namespace

bool isPlainName(std::string_view text) {
    if (text.empty() || !isLetter(text[0])) return false;
    for (char c : text)
        if (!isLetter(c) && !isDigit(c)) return false;
    return true;
}

std::optional<std::pair<std::string, std::string>> splitFieldName(std::string_view text) {
    auto at = text.find("::");
    if (at == std::string_view::npos) return std::nullopt;
    auto table = text.substr(0, at), field = text.substr(at + 2);
    if (!isPlainName(table) || !isPlainName(field)) return std::nullopt;
    return std::make_pair(std::string(table), std::string(field));
}

bool isVariableName(std::string_view text) {
    size_t dollars = text.rfind("$$", 0) == 0 ? 2 : text.rfind('$', 0) == 0 ? 1 : 0;
    if (!dollars) return false;
    auto name = text.substr(dollars);
    if (name.empty() || !isLetter(name[0])) return false;
    for (char c : name)
        if (!isLetter(c) && !isDigit(c) && c != '.') return false;
    return true;
}

}  // namespace vdhost
