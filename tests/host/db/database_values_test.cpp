// What goes into a field and what comes back: the kinds, the conversions into each kind, names,
// and that a refused write changes nothing.
#include "temp_folder.h"

#include <db/database.h>

#include <api/fnam.h>

#include <gmock/gmock.h>

#include <cmath>

namespace vdhost::db {
namespace {

using testing::bytesOf;
using testing::expectSameContainer;
using ::testing::HasSubstr;

class DatabaseValues : public testing::TempFolderTest {
protected:
    FMX_Data readBack(std::string_view table, std::string_view field) {
        auto value = db.read(table, field);
        EXPECT_TRUE(value) << table << "::" << field;
        return value ? *value : FMX_Data{};
    }
    // The kind a field's value comes back as, and its text.
    using Typed = std::pair<int32_t, std::string>;
    Typed typed(std::string_view table, std::string_view field) {
        const FMX_Data value = readBack(table, field);
        return {value.type, utf8Of(value)};
    }

    std::string refusal(std::string_view table, std::string_view field, const FMX_Data& value) {
        try {
            db.write(table, field, value);
        } catch (const DatabaseError& e) {
            return e.what();
        }
        return "accepted";
    }

    Database db{file("Untitled.vddb")};
};

FMX_Data withType(FMX_Data value, int32_t type) {
    value.type = type;
    return value;
}

TEST_F(DatabaseValues, EachKindRoundTrips) {
    db.write("People", "Name", makeTextUtf8("Zo\xC3\xAB \xF0\x9F\x98\x80"));
    db.write("People", "Age", makeNumber(42.5));
    db.write("People", "Born", withType(makeText(u"1/2/1990"), FMX_TYPE_DATE));

    EXPECT_EQ(readBack("People", "Name").text.units, u"Zo\u00EB \U0001F600");
    EXPECT_EQ(typed("People", "Age"), (Typed{FMX_TYPE_NUMBER, "42.5"}));
    EXPECT_EQ(typed("People", "Born"), (Typed{FMX_TYPE_DATE, "1/2/1990"}));

    // Unknown fields and tables are no field, not an empty one.
    EXPECT_FALSE(db.read("People", "Height"));
    EXPECT_FALSE(db.read("Animals", "Name"));
}

TEST_F(DatabaseValues, ContainerRoundTripsByteForByteWithALargeStream) {
    Bytes large(20 * 1024 * 1024);
    for (size_t i = 0; i < large.size(); ++i) large[i] = static_cast<uint8_t>((i * 2654435761u) >> 13);
    FMX_BinaryData binary;
    binary.streams.push_back({0x4A504547, StreamBytes::copyOf(large.data(), large.size())});
    binary.streams.push_back({kFnamType, std::make_shared<const StreamBytes>(encodeFnam(u"big.jpg"))});
    binary.streams.push_back({0x5A45524F, std::make_shared<const StreamBytes>()});  // 'ZERO', 0 bytes
    binary.streams.push_back({0x534E4420, bytesOf("last")});
    const FMX_Data container = makeContainer(std::move(binary), u"big.jpg");
    db.write("Media", "Photo", container);
    expectSameContainer(readBack("Media", "Photo"), container);
}

TEST_F(DatabaseValues, ReferenceTextGoesIntoAContainerFieldAsAReference) {
    db.define("Media", "Photo", FieldKind::Container);
    const std::u16string reference = u"size:640,480\rimagemac:/Volumes/Disk/p.jpg\rimagewin:/C:/p.jpg";
    db.write("Media", "Photo", makeText(reference));
    const FMX_Data back = readBack("Media", "Photo");
    EXPECT_EQ(back.type, FMX_TYPE_BINARY);
    EXPECT_TRUE(back.binary.streams.empty());
    EXPECT_EQ(back.text.units, reference);

    // A container stored by reference written as a value stays one too.
    db.write("Media", "Copy", back);
    EXPECT_EQ(readBack("Media", "Copy").text.units, reference);
}

TEST_F(DatabaseValues, PlainTextIntoAContainerFieldIsRefusedAndNothingIsWritten) {
    FMX_BinaryData binary;
    binary.streams.push_back({0x504E4720, bytesOf("png")});
    const FMX_Data png = makeContainer(std::move(binary), u"a.png");
    db.write("Media", "Photo", png);

    EXPECT_EQ(refusal("Media", "Photo", makeText(u"just a note that is longer than forty characters")),
              "Container field Media::Photo cannot hold the text \"just a note that is longer than forty ch...\"");
    EXPECT_THAT(refusal("media", "PHOTO", makeNumber(3)), HasSubstr("cannot hold the text \"3\""));
    expectSameContainer(readBack("Media", "Photo"), png);
}

TEST_F(DatabaseValues, NumberFieldsTakeTheNumberInATextAndTextFieldsTheTextOfAnyValue) {
    db.define("T", "N", FieldKind::Number);
    db.write("T", "N", makeText(u"-1.50 EUR"));
    EXPECT_EQ(readBack("T", "N").number.value, -1.5);
    db.write("T", "N", makeBoolean(true));
    EXPECT_EQ(typed("T", "N"), (Typed{FMX_TYPE_NUMBER, "1"}));

    // A text without a number is refused rather than stored as an empty.
    EXPECT_THAT([&] { db.write("T", "N", makeText(u"no digits")); },
                ::testing::ThrowsMessage<DatabaseError>(HasSubstr("holds no number")));
    EXPECT_EQ(readBack("T", "N").number.value, 1);
    // A text field takes the text form of any value.
    db.define("T", "Note", FieldKind::Text);
    db.write("T", "Note", makeNumber(0.1 + 0.2));
    EXPECT_EQ(typed("T", "Note"), (Typed{FMX_TYPE_TEXT, "0.3"}));
    db.write("T", "Note", makeContainer({}, u"file:a.txt"));
    EXPECT_EQ(readBack("T", "Note").text.units, u"file:a.txt");
}

TEST_F(DatabaseValues, EmptyValuesReadAsEmptyOfTheFieldsKind) {
    db.write("T", "Text", makeText(u"x"));
    db.write("T", "Number", makeNumber(1));
    FMX_BinaryData binary;
    binary.streams.push_back({0x4A504547, bytesOf("x")});
    db.write("T", "Box", makeContainer(std::move(binary)));
    for (const char* field : {"Text", "Number", "Box"}) db.write("T", field, makeText({}));

    // A defined field that was never written reads as empty too.
    db.define("T", "Later", FieldKind::Container);
    for (const char* field : {"Text", "Number", "Box", "Later"}) EXPECT_TRUE(emptyOf(readBack("T", field))) << field;
    EXPECT_EQ(readBack("T", "Text").type, FMX_TYPE_TEXT);
    EXPECT_EQ(readBack("T", "Box").type, FMX_TYPE_BINARY);
    EXPECT_EQ(readBack("T", "Later").type, FMX_TYPE_BINARY);
}

TEST_F(DatabaseValues, KindIsFixedWhenTheFieldIsMade) {
    db.write("T", "N", makeNumber(5));
    db.write("T", "N", makeText(u"12 items"));
    EXPECT_EQ(typed("T", "N"), (Typed{FMX_TYPE_NUMBER, "12"}));
    db.write("T", "S", makeText(u"5"));
    EXPECT_THAT([&] { db.define("T", "S", FieldKind::Number); },
                ::testing::ThrowsMessage<DatabaseError>(HasSubstr("text field that holds data")));
    db.write("T", "Empty", makeText({}));  // even an empty first value makes a text field
    db.define("T", "Empty", FieldKind::Text);
    db.define("T", "Empty", FieldKind::Number);  // but one that holds nothing may change kind
    db.define("T", "Box", FieldKind::Container);
    db.define("t", "box", FieldKind::Container);

    EXPECT_EQ(db.fields(), (std::vector<FieldInfo>{{"T", "N", FieldKind::Number}, {"T", "S", FieldKind::Text},
                                                   {"T", "Empty", FieldKind::Number},
                                                   {"T", "Box", FieldKind::Container}}));
}

TEST_F(DatabaseValues, NamesMatchWithoutRegardToAsciiCase) {
    db.write("Invoices", "Total", makeNumber(10));
    db.write("INVOICES", "total", makeNumber(11));
    EXPECT_EQ(readBack("invoices", "TOTAL").number.value, 11);
    db.write("Straße", "Ä", makeText(u"upper"));
    db.write("Straße", "ä", makeText(u"lower"));  // only ASCII letters fold
    EXPECT_EQ(utf8Of(readBack("STRAßE", "Ä")), "upper");
    EXPECT_EQ(utf8Of(readBack("straße", "ä")), "lower");
    EXPECT_EQ(db.fields(), (std::vector<FieldInfo>{{"Invoices", "Total", FieldKind::Number},
                                                   {"Straße", "Ä", FieldKind::Text}, {"Straße", "ä", FieldKind::Text}}));
}

TEST_F(DatabaseValues, RefusedWritesLeaveTheDatabaseAsItWas) {
    EXPECT_THAT(refusal("", "F", makeText(u"x")), HasSubstr("table name cannot be empty"));
    EXPECT_THAT(refusal("T", "", makeText(u"x")), HasSubstr("field name cannot be empty"));
    EXPECT_FALSE(db.exists());
    // Numbers that are not finite are refused. A write that fails after the table and field were made
    // takes them back with it; one into an existing field leaves its value.
    db.write("T", "F", makeNumber(7));
    EXPECT_THAT(refusal("T", "F", makeNumber(INFINITY)), ::testing::AllOf(HasSubstr("T::F"), HasSubstr("not finite")));
    EXPECT_EQ(readBack("T", "F").number.value, 7);

    EXPECT_THROW(db.write("New", "N", makeNumber(NAN)), DatabaseError);
    EXPECT_FALSE(db.read("New", "N"));
    EXPECT_EQ(db.fields(), (std::vector<FieldInfo>{{"T", "F", FieldKind::Number}}));
    db.write("New", "N", makeNumber(1));  // the names are free again
    EXPECT_EQ(readBack("New", "N").number.value, 1);
}

}  // namespace
}  // namespace vdhost::db
