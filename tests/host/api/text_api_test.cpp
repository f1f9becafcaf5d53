// Host texts through the C API: encodings, slices, find, and failure records.
#include "call_record.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

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

TEST(HostText, Utf8AndLatin1RoundTripsOfNonAsciiText) {
    TextOwner t;
    // "Grüße ¶ 日本 🎵": two-byte, three-byte and four-byte (surrogate pair) characters.
    const char* utf8 = "Gr\xC3\xBC\xC3\x9F" "e \xC2\xB6 \xE6\x97\xA5\xE6\x9C\xAC \xF0\x9F\x8E\xB5";
    FM_Text_Assign(t.p, utf8, FMX_ENCODING_UTF8, Rec());
    EXPECT_EQ(unitsOf(t.p), u"Grüße ¶ 日本 🎵");
    EXPECT_EQ(FM_Text_GetSize(t.p, Rec()), 13u);  // the note is two UTF-16 units
    EXPECT_EQ(bytesOf(t.p, FMX_ENCODING_UTF8), utf8);
    // The native encoding is ISO-8859-1: what it lacks becomes '?'.
    EXPECT_EQ(bytesOf(t.p, FMX_ENCODING_NATIVE), "Gr\xFC\xDF" "e \xB6 ?? ?");

    FM_Text_Assign(t.p, "caf\xE9", FMX_ENCODING_NATIVE, Rec());
    EXPECT_EQ(unitsOf(t.p), u"café");
    EXPECT_EQ(bytesOf(t.p, FMX_ENCODING_UTF8), "caf\xC3\xA9");
}

TEST(HostText, InvalidUtf8BecomesReplacementCharacters) {
    TextOwner t;
    FM_Text_Assign(t.p, "a\xC3(b\xFF" "c\xE6\x97", FMX_ENCODING_UTF8, Rec());
    EXPECT_EQ(unitsOf(t.p), u"a\uFFFD(b\uFFFDc\uFFFD");
    // A lone surrogate written out as UTF-8 is replaced too.
    const uint16_t lone[] = {u'x', 0xD800, u'y', 0};
    FM_Text_AssignUnicode(t.p, lone, Rec());
    EXPECT_EQ(bytesOf(t.p, FMX_ENCODING_UTF8), "x\xEF\xBF\xBDy");
}

TEST(HostText, GetBytesNeverSplitsACharacterAndTerminatesWhenThereIsRoom) {
    TextOwner t;
    FM_Text_Assign(t.p, "\xC3\xA9\xC3\xA9", FMX_ENCODING_UTF8, Rec());  // "éé", 4 bytes
    EXPECT_EQ(bytesOf(t.p, FMX_ENCODING_UTF8, 3), "\xC3\xA9");
    char buffer[8];
    std::fill(std::begin(buffer), std::end(buffer), 'x');
    EXPECT_EQ(FM_Text_GetBytes(t.p, buffer, 5, 0, FMX_TEXT_ALL, FMX_ENCODING_UTF8, Rec()), 4u);
    EXPECT_EQ(buffer[4], '\0');
    EXPECT_EQ(buffer[5], 'x');
    // A slice from position 1.
    EXPECT_EQ(FM_Text_GetBytes(t.p, buffer, 8, 1, 1, FMX_ENCODING_UTF8, Rec()), 2u);
}

TEST(HostText, FindDeleteAppendAndEquality) {
    TextOwner t, what, other;
    FM_Text_Assign(t.p, "one two one", FMX_ENCODING_UTF8, Rec());
    FM_Text_Assign(what.p, "one", FMX_ENCODING_UTF8, Rec());
    EXPECT_EQ(FM_Text_Find(t.p, what.p, 0, Rec()), 0u);
    EXPECT_EQ(FM_Text_Find(t.p, what.p, 1, Rec()), 8u);
    EXPECT_EQ(FM_Text_Find(t.p, what.p, 9, Rec()), FMX_TEXT_NOT_FOUND);
    EXPECT_EQ(FM_Text_Find(t.p, what.p, 500, Rec()), FMX_TEXT_NOT_FOUND);

    FM_Text_DeleteText(t.p, 3, 4, Rec());
    EXPECT_EQ(unitsOf(t.p), u"one one");
    FM_Text_DeleteText(t.p, 5, 100, Rec());  // clamped to the end
    EXPECT_EQ(unitsOf(t.p), u"one o");

    FM_Text_AppendText(t.p, t.p, 0, 3, Rec());  // appending a part of itself
    EXPECT_EQ(unitsOf(t.p), u"one oone");

    FM_Text_Assign(other.p, "one oone", FMX_ENCODING_UTF8, Rec());
    EXPECT_TRUE(FM_Text_operatorEQ(t.p, other.p, Rec()));
    FM_Text_Assign(other.p, "One oone", FMX_ENCODING_UTF8, Rec());
    EXPECT_FALSE(FM_Text_operatorEQ(t.p, other.p, Rec()));
}

TEST(HostText, FailuresSetTheRecordAndNeverThrow) {
    TextOwner t;
    Rec rec;
    FM_Text_Assign(t.p, "x", 7, &rec);  // no such encoding
    EXPECT_EQ(rec.code, FMX_RECORD_FAILED);
    Rec rec2;
    FM_Text_Assign(nullptr, "x", FMX_ENCODING_UTF8, &rec2);
    EXPECT_EQ(rec2.code, FMX_RECORD_FAILED);
    Rec rec3;
    EXPECT_EQ(FM_Text_GetSize(nullptr, &rec3), 0u);
    EXPECT_EQ(rec3.code, FMX_RECORD_FAILED);
    Rec ok;
    FM_Text_Assign(t.p, "fine", FMX_ENCODING_UTF8, &ok);
    EXPECT_EQ(ok.code, FMX_RECORD_OK);
    EXPECT_EQ(ok.version, FMX_RECORD_VERSION);
}

}  // namespace
