#include "names.h"

#include "database_error.h"

namespace vdhost::db {
namespace {

char foldAscii(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

}  // namespace

bool sameName(std::string_view a, std::string_view b) {
    if (a.size() != b.size()) return false;
    for (size_t i = 0; i < a.size(); ++i)
        if (foldAscii(a[i]) != foldAscii(b[i])) return false;
    return true;
}

void checkName(std::string_view name, const char* what) {
    if (name.empty()) throw DatabaseError(std::string("A ") + what + " name cannot be empty");
    if (name.find('\0') != std::string_view::npos)
        throw DatabaseError(std::string("A ") + what + " name cannot hold a NUL character");
}

std::string qualifiedName(std::string_view table, std::string_view field) {
    std::string s(table);
    s += "::";
    s += field;
    return s;
}

}  // namespace vdhost::db
