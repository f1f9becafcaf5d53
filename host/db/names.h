// Table and field names. They are kept as the user wrote them and compared the way calculations
// compare names: ASCII letters without regard to case, every other byte as it is. SQLite's NOCASE
// collation folds exactly the same way, so the file's unique indexes agree with sameName.
#pragma once

#include <string>
#include <string_view>

namespace vdhost::db {

bool sameName(std::string_view a, std::string_view b);

// Throws DatabaseError for a name that cannot be stored: empty, or holding a NUL byte.
void checkName(std::string_view name, const char* what);

// "T::F", the way field references are written in calculations and messages.
std::string qualifiedName(std::string_view table, std::string_view field);

}  // namespace vdhost::db
