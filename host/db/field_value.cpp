#include "field_value.h"

#include "container_blob.h"
#include "database_error.h"
#include "names.h"
#include "reference_text.h"

#include <api/text_codec.h>
#include <api/values.h>

#include <cmath>

namespace vdhost::db {
namespace {

// How much of a refused text the error message quotes.
constexpr size_t kQuotedUnits = 40;

bool isTextType(int32_t type) {
    return type == FMX_TYPE_TEXT || type == FMX_TYPE_DATE || type == FMX_TYPE_TIME ||
           type == FMX_TYPE_TIMESTAMP;
}

std::string quoteStart(std::u16string_view text) {
    size_t n = std::min(text.size(), kQuotedUnits);
    // Never cut a surrogate pair in half.
    if (n < text.size() && n > 0 && text[n - 1] >= 0xD800 && text[n - 1] <= 0xDBFF) --n;
    return "\"" + utf16ToUtf8(text.substr(0, n)) + (n < text.size() ? "...\"" : "\"");
}

std::string streamTypes(const FMX_Data& value) {
    std::string types;
    for (const auto& stream : value.binary.streams) types += (types.empty() ? "\"" : ", \"") + fourCharText(stream.type) + "\"";
    return types;
}

// A container with data has no text that could stand for it: storing its text would put an empty
// or a mere name in place of the data.
[[noreturn]] void refuseContainer(FieldKind kind, const FMX_Data& value, std::string_view table,
                                  std::string_view field) {
    std::string name = qualifiedName(table, field);
    std::string kindText = kind == FieldKind::Text ? "Text" : "Number";
    throw DatabaseError(kindText + " field " + name + " cannot hold a container (" + streamTypes(value) +
                        "); while it is empty, vdhost define " + name + " container makes it a container field");
}

StoredValue asText(const FMX_Data& value, std::string_view table, std::string_view field) {
    if (isContainer(value) && !value.binary.streams.empty()) refuseContainer(FieldKind::Text, value, table, field);
    StoredValue stored;
    const std::u16string& units = textOf(value).units;
    if (units.empty()) return stored;
    stored.form = StoredValue::Form::Text;
    stored.type = isTextType(value.type) ? value.type : FMX_TYPE_TEXT;
    stored.text = utf16ToUtf8(units);
    return stored;
}

StoredValue asNumber(const FMX_Data& value, std::string_view table, std::string_view field) {
    if (isContainer(value)) refuseContainer(FieldKind::Number, value, table, field);
    StoredValue stored;
    // Text becomes the number its digits spell, as GetAsNumber reads it ("a1b2" is 12); a text
    // without any would be stored as nothing, so it is refused instead.
    std::optional<double> number =
        isNumeric(value) ? std::optional<double>(value.number.value) : parseNumber(textOf(value).units);
    if (!number)
        throw DatabaseError("Number field " + qualifiedName(table, field) + " cannot hold the text " +
                            quoteStart(textOf(value).units) + ", which holds no number");
    if (!std::isfinite(*number))
        throw DatabaseError("Number field " + qualifiedName(table, field) +
                            " cannot hold a number that is not finite");
    stored.form = StoredValue::Form::Number;
    stored.type = FMX_TYPE_NUMBER;
    stored.number = *number;
    return stored;
}

StoredValue asContainer(const FMX_Data& value, std::string_view table, std::string_view field) {
    StoredValue stored;
    if (isContainer(value)) {
        stored.blob = encodeContainer(value);
    } else {
        const std::u16string& units = textOf(value).units;
        if (!isReferenceText(units))
            throw DatabaseError("Container field " + qualifiedName(table, field) + " cannot hold the text " +
                                quoteStart(units));
        stored.blob = encodeContainer(makeContainer({}, units));
    }
    stored.form = StoredValue::Form::Container;
    stored.type = FMX_TYPE_BINARY;
    return stored;
}

}  // namespace

FieldKind kindForValue(const FMX_Data& value) {
    if (isContainer(value)) return FieldKind::Container;
    if (isNumeric(value)) return FieldKind::Number;
    return FieldKind::Text;
}

StoredValue storedFormOf(const FMX_Data& value, FieldKind kind, std::string_view table,
                         std::string_view field) {
    if (emptyOf(value)) return {};
    switch (kind) {
        case FieldKind::Text: return asText(value, table, field);
        case FieldKind::Number: return asNumber(value, table, field);
        case FieldKind::Container: return asContainer(value, table, field);
    }
    return {};
}

FMX_Data emptyValueOf(FieldKind kind) {
    return kind == FieldKind::Container ? makeContainer({}) : makeText({});
}

FMX_Data textValue(std::string_view utf8, int32_t type) {
    FMX_Data value = makeTextUtf8(utf8);
    if (isTextType(type)) value.type = type;
    return value;
}

}  // namespace vdhost::db
