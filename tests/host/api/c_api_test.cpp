// The host's C API: texts (encodings, slices, find), data values, numbers and argument vectors,
// container data (ordered typed streams, lookups, removal and file names), and failure records.
#include <fmx/fmx.h>

#include "api/values.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

namespace {

// A fresh call record for one call: Rec() lives until the end of the call's full expression.
struct Rec : FMX_CallRecord {
    Rec() : FMX_CallRecord{FMX_RECORD_VERSION, FMX_RECORD_OK} {}
    operator FMX_CallRecord*() { return this; }
};

// Whether call, given a fresh record, marks it failed.
template <typename Call>
bool failed(Call call) {
    Rec rec;
    call(&rec);
    return rec.code == FMX_RECORD_FAILED;
}

struct TextOwner {
    FMX_Text* p = FM_Text_Constructor1(Rec());
    ~TextOwner() { FM_Text_Delete(p, Rec()); }
};

std::u16string unitsOf(const FMX_Text* t) {
    std::u16string out(FM_Text_GetSize(t, Rec()), u'\0');
    FM_Text_GetUnicode(t, reinterpret_cast<uint16_t*>(out.data()), 0, FMX_TEXT_ALL, Rec());
    return out;
}

std::string bytesOf(const FMX_Text* t, int32_t encoding, uint32_t capacity = 256) {
    std::vector<char> buffer(capacity + 1, 'x');
    uint32_t n = FM_Text_GetBytes(t, buffer.data(), capacity, 0, FMX_TEXT_ALL, encoding, Rec());
    return std::string(buffer.data(), n);
}

TEST(HostText, EncodingsFindDeleteAppendAndEquality) {
    TextOwner t;
    // "Grüße ¶ 日本 🎵": two-byte, three-byte and four-byte (surrogate pair) characters.
    const char* utf8 = "Gr\xC3\xBC\xC3\x9F" "e \xC2\xB6 \xE6\x97\xA5\xE6\x9C\xAC \xF0\x9F\x8E\xB5";
    FM_Text_Assign(t.p, utf8, FMX_ENCODING_UTF8, Rec());
    EXPECT_EQ(unitsOf(t.p), u"Grüße ¶ 日本 🎵");
    EXPECT_EQ(bytesOf(t.p, FMX_ENCODING_UTF8), utf8);
    // The native encoding is ISO-8859-1: what it lacks becomes '?'.
    EXPECT_EQ(bytesOf(t.p, FMX_ENCODING_NATIVE), "Gr\xFC\xDF" "e \xB6 ?? ?");
    FM_Text_Assign(t.p, "caf\xE9", FMX_ENCODING_NATIVE, Rec());
    EXPECT_EQ(bytesOf(t.p, FMX_ENCODING_UTF8), "caf\xC3\xA9");

    FM_Text_Assign(t.p, "a\xC3(b\xFF" "c\xE6\x97", FMX_ENCODING_UTF8, Rec());
    EXPECT_EQ(unitsOf(t.p), u"a\uFFFD(b\uFFFDc\uFFFD");
    const uint16_t lone[] = {u'x', 0xD800, u'y', 0};  // a lone surrogate
    FM_Text_AssignUnicode(t.p, lone, Rec());
    EXPECT_EQ(bytesOf(t.p, FMX_ENCODING_UTF8), "x\xEF\xBF\xBDy");

    // GetBytes never splits a character and terminates only when there is room.
    FM_Text_Assign(t.p, "\xC3\xA9\xC3\xA9", FMX_ENCODING_UTF8, Rec());  // "éé", 4 bytes
    EXPECT_EQ(bytesOf(t.p, FMX_ENCODING_UTF8, 3), "\xC3\xA9");
    char buffer[8] = {'x', 'x', 'x', 'x', 'x', 'x', 'x', 'x'};
    EXPECT_EQ(FM_Text_GetBytes(t.p, buffer, 5, 0, FMX_TEXT_ALL, FMX_ENCODING_UTF8, Rec()), 4u);
    EXPECT_EQ(std::string(buffer + 4, 2), std::string("\0x", 2));

    EXPECT_TRUE(failed([&](Rec* r) { FM_Text_Assign(t.p, "x", 7, r); }));  // no such encoding
    EXPECT_TRUE(failed([&](Rec* r) { EXPECT_EQ(FM_Text_GetSize(nullptr, r), 0u); }));
    // Find, delete, append and equality.
    TextOwner what;
    FM_Text_Assign(t.p, "one two one", FMX_ENCODING_UTF8, Rec());
    FM_Text_Assign(what.p, "one", FMX_ENCODING_UTF8, Rec());
    EXPECT_EQ(FM_Text_Find(t.p, what.p, 1, Rec()), 8u);
    EXPECT_EQ(FM_Text_Find(t.p, what.p, 9, Rec()), FMX_TEXT_NOT_FOUND);
    FM_Text_DeleteText(t.p, 3, 4, Rec());
    FM_Text_DeleteText(t.p, 5, 100, Rec());  // clamped to the end
    FM_Text_AppendText(t.p, t.p, 0, 3, Rec());  // appending a part of itself
    EXPECT_EQ(unitsOf(t.p), u"one oone");
    FM_Text_Assign(what.p, "one oone", FMX_ENCODING_UTF8, Rec());
    EXPECT_TRUE(FM_Text_operatorEQ(t.p, what.p, Rec()));
}

std::u16string textOfData(const FMX_Data* d) {
    const FMX_Text* t = FM_Data_GetAsText(d, Rec());
    std::u16string out(FM_Text_GetSize(t, Rec()), u'\0');
    FM_Text_GetUnicode(t, reinterpret_cast<uint16_t*>(out.data()), 0, FMX_TEXT_ALL, Rec());
    return out;
}

TEST(HostNumbers, AsLongTruncatesTowardZeroAndSaturates) {
    FMX_FixPt* n = FM_FixPt_Constructor1(0, Rec());
    struct Case { double value; int32_t asLong; bool asBool; } cases[] = {
        {-2.9, -2, true}, {0.4, 0, true}, {-0.0, 0, false}, {1e12, INT32_MAX, true}, {-1e12, INT32_MIN, true}};
    for (const auto& c : cases) {
        FM_FixPt_AssignDouble(n, c.value, Rec());
        EXPECT_EQ(FM_FixPt_AsLong(n, Rec()), c.asLong) << c.value;
        EXPECT_EQ(FM_FixPt_AsBool(n, Rec()), c.asBool) << c.value;
    }
    EXPECT_TRUE(failed([&](Rec* r) { FM_FixPt_AssignDouble(n, std::numeric_limits<double>::quiet_NaN(), r); }));
    EXPECT_EQ(FM_FixPt_AsFloat(n, Rec()), -1e12);  // unchanged by the refused assignment
    FM_FixPt_Delete(n, Rec());
}

// The plug-in stores its texts as text; the number the text holds is read from it all the same.
TEST(HostData, SetAsTextKeepsTheTextAndRefusesUnknownTypes) {
    FMX_Data* d = FM_Data_Constructor1(Rec());
    TextOwner t;
    FM_Text_Assign(t.p, "12.50 EUR", FMX_ENCODING_UTF8, Rec());
    EXPECT_EQ(FM_Data_SetAsText(d, t.p, nullptr, FMX_TYPE_TEXT, Rec()), FMX_NO_ERROR);
    EXPECT_EQ(FM_Data_GetNativeType(d, Rec()), FMX_TYPE_TEXT);
    EXPECT_EQ(textOfData(d), u"12.50 EUR");
    EXPECT_EQ(FM_FixPt_AsLong(FM_Data_GetAsNumber(d, Rec()), Rec()), 12);
    EXPECT_FALSE(FM_Data_IsEmpty(d, Rec()));
    EXPECT_TRUE(failed([&](Rec* r) { EXPECT_NE(FM_Data_SetAsText(d, t.p, nullptr, 99, r), FMX_NO_ERROR); }));
    FM_Data_Clear(d, FMX_TYPE_TEXT, Rec());
    EXPECT_TRUE(FM_Data_IsEmpty(d, Rec()));
    FM_Data_Delete(d, Rec());
}

TEST(HostDataVect, IndexesOutOfRangeFailWithoutCrashing) {
    FMX_DataVect* v = FM_DataVect_Constructor1(Rec());
    FMX_Data* d = FM_Data_Constructor1(Rec());
    FMX_FixPt* n = FM_FixPt_Constructor1(7, Rec());
    FM_Data_SetAsNumber(d, n, FMX_TYPE_NUMBER, Rec());
    FM_DataVect_PushBack(v, d, Rec());
    FM_Data_Delete(d, Rec());  // the vector keeps its own copy

    EXPECT_EQ(FM_FixPt_AsLong(FM_DataVect_AtAsNumber(v, 0, Rec()), Rec()), 7);
    EXPECT_EQ(unitsOf(FM_DataVect_AtAsText(v, 0, Rec())), u"7");
    EXPECT_TRUE(failed([&](Rec* r) { EXPECT_EQ(FM_DataVect_At(v, 1, r), nullptr); }));

    FM_DataVect_Clear(v, Rec());
    EXPECT_EQ(FM_DataVect_Size(v, Rec()), 0u);
    FM_FixPt_Delete(n, Rec());
    FM_DataVect_Delete(v, Rec());
}

struct Quad {
    FMX_QuadChar* p;
    explicit Quad(const char* c) : p(FM_QuadChar_Constructor2(c[0], c[1], c[2], c[3], Rec())) {}
    ~Quad() { FM_QuadChar_Delete(p, Rec()); }
};

class HostBinaryData : public ::testing::Test {
protected:
    void SetUp() override { b = FM_BinaryData_Constructor1(Rec()); }
    void TearDown() override { FM_BinaryData_Delete(b, Rec()); }

    FMX_ErrCode add(const char* type, const std::string& bytes) {
        return FM_BinaryData_Add(b, Quad(type).p, static_cast<uint32_t>(bytes.size()), bytes.data(), Rec());
    }
    int32_t index(const char* type) { return FM_BinaryData_GetIndex(b, Quad(type).p, Rec()); }
    std::string typeAt(int32_t i) {
        FMX_QuadChar* q = FM_QuadChar_Constructor1(Rec());
        FM_BinaryData_GetType(b, i, q, Rec());
        uint32_t code = FM_QuadChar_GetMacType(q, Rec());
        FM_QuadChar_Delete(q, Rec());
        return {static_cast<char>(code >> 24), static_cast<char>(code >> 16), static_cast<char>(code >> 8),
                static_cast<char>(code)};
    }

    FMX_BinaryData* b = nullptr;
};

TEST_F(HostBinaryData, StreamsKeepTheirOrderThroughAddAndRemove) {
    ASSERT_EQ(add("JPEG", "jpeg-bytes"), FMX_NO_ERROR);
    ASSERT_EQ(add("SIZE", std::string("\x00\x10\x00\x20", 4)), FMX_NO_ERROR);
    ASSERT_EQ(add("snd ", ""), FMX_NO_ERROR);  // an empty stream is still a stream
    EXPECT_EQ(add("JPEG", "again"), FMX_ERR_ALREADY_EXISTS);
    EXPECT_EQ(FM_BinaryData_GetCount(b, Rec()), 3);
    EXPECT_EQ(typeAt(1), "SIZE");
    EXPECT_LT(index("PNGf"), 0);

    char part[4] = {};
    EXPECT_EQ(FM_BinaryData_GetData(b, 0, 5, 4, part, Rec()), FMX_NO_ERROR);
    EXPECT_EQ(std::string(part, 4), "byte");
    EXPECT_EQ(FM_BinaryData_GetData(b, 0, 8, 4, part, Rec()), FMX_ERR_PARAMETER);  // past the end
    EXPECT_TRUE(failed([&](Rec* r) { EXPECT_EQ(FM_BinaryData_GetSize(b, 3, r), 0u); }));

    EXPECT_TRUE(FM_BinaryData_Remove(b, Quad("SIZE").p, Rec()));
    EXPECT_FALSE(FM_BinaryData_Remove(b, Quad("SIZE").p, Rec()));
    EXPECT_EQ(index("snd "), 1);
    FMX_BinaryData* copy = FM_BinaryData_Constructor2(b, Rec());
    FM_BinaryData_RemoveAll(b, Rec());
    EXPECT_EQ(FM_BinaryData_GetCount(b, Rec()), 0);
    EXPECT_EQ(FM_BinaryData_GetCount(copy, Rec()), 2);  // the copy is independent
    FM_BinaryData_Delete(copy, Rec());
}

TEST_F(HostBinaryData, FileNamesRoundTripThroughTheHostsOwnEncoding) {
    TextOwner name, back;
    FM_Text_Assign(name.p, "Überweisung März.pdf", FMX_ENCODING_UTF8, Rec());
    add("FILE", "%PDF");
    ASSERT_EQ(FM_BinaryData_AddFNAMData(b, name.p, Rec()), FMX_NO_ERROR);
    EXPECT_EQ(FM_BinaryData_AddFNAMData(b, name.p, Rec()), FMX_ERR_ALREADY_EXISTS);
    // The stream is not the plain name: it is the host's encoding of it.
    std::string raw(FM_BinaryData_GetSize(b, 1, Rec()), '\0');
    FM_BinaryData_GetData(b, 1, 0, static_cast<uint32_t>(raw.size()), raw.data(), Rec());
    EXPECT_NE(raw, "Überweisung März.pdf");
    ASSERT_EQ(FM_BinaryData_GetFNAMData(b, back.p, Rec()), FMX_NO_ERROR);
    EXPECT_TRUE(FM_Text_operatorEQ(name.p, back.p, Rec()));

    // A stream named FNAM that was not written by the host is not a file name.
    FM_BinaryData_RemoveAll(b, Rec());
    add("FNAM", "");
    EXPECT_EQ(FM_BinaryData_GetFNAMData(b, back.p, Rec()), FMX_ERR_PARAMETER);
}

}  // namespace
