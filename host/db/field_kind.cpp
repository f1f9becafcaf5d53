#include "field_kind.h"

#include "names.h"

namespace vdhost::db {

const char* kindName(FieldKind kind) {
    switch (kind) {
        case FieldKind::Text: return "text";
        case FieldKind::Number: return "number";
        case FieldKind::Container: return "container";
    }
    return "text";
}

std::optional<FieldKind> parseKind(std::string_view name) {
    for (FieldKind kind : {FieldKind::Text, FieldKind::Number, FieldKind::Container})
        if (sameName(name, kindName(kind))) return kind;
    return std::nullopt;
}

}  // namespace vdhost::db
