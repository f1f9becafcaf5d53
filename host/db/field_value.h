// How a value written into a field is turned into what the field keeps, and back. The rules follow
// the field's kind, not the value's type: the kind was fixed when the field was made.
#pragma once

#include "field_kind.h"

#include <api/objects.h>

#include <span>
#include <string>
#include <string_view>

namespace vdhost::db {

// What one field of one record keeps: nothing, a text (UTF-8, with the native type it was written
// as: text, date, time or timestamp), a number, or a container in the layout of container_blob.h.
struct StoredValue {
    enum class Form { Empty, Text, Number, Container };
    Form form = Form::Empty;
    int32_t type = FMX_TYPE_TEXT;
    std::string text;
    double number = 0;
    Bytes blob;
};

// The kind a field gets when the first value written makes it.
FieldKind kindForValue(const FMX_Data& value);

// value as field table::field of the given kind keeps it: a number in a text field as its text, a
// text in a number field as the number its digits spell, a reference text in a container field as a
// reference container. Throws DatabaseError, never storing an empty in place of data, when the kind
// cannot hold the value: a container with data in a text field, a container or a text without
// digits in a number field, plain text (not a reference) in a container field, a number that is
// not finite.
StoredValue storedFormOf(const FMX_Data& value, FieldKind kind, std::string_view table,
                         std::string_view field);

// Values as read back.
FMX_Data emptyValueOf(FieldKind kind);
FMX_Data textValue(std::string_view utf8, int32_t type);

}  // namespace vdhost::db
