// The kinds of field a database holds. A field's kind is fixed when the field is made.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace vdhost::db {

enum class FieldKind { Text, Number, Container };

struct FieldInfo {
    std::string table;
    std::string field;
    FieldKind kind;

    bool operator==(const FieldInfo&) const = default;
};

// "text", "number", "container": the names used in the file and in listings.
const char* kindName(FieldKind kind);
// The reverse of kindName, ASCII case-insensitive; nullopt for any other name.
std::optional<FieldKind> parseKind(std::string_view name);

}  // namespace vdhost::db
