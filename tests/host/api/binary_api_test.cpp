// Container data through the C API: ordered typed streams, lookups, removal and file names.
#include "call_record.h"

#include <gtest/gtest.h>

#include <string>

namespace {

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

TEST_F(HostBinaryData, StreamsKeepTheirOrderAndAbsentTypesHaveNegativeIndexes) {
    ASSERT_EQ(add("JPEG", "jpeg-bytes"), FMX_NO_ERROR);
    ASSERT_EQ(add("SIZE", std::string("\x00\x10\x00\x20", 4)), FMX_NO_ERROR);
    ASSERT_EQ(add("snd ", ""), FMX_NO_ERROR);  // an empty stream is still a stream
    EXPECT_EQ(FM_BinaryData_GetCount(b, Rec()), 3);
    EXPECT_EQ(typeAt(0), "JPEG");
    EXPECT_EQ(typeAt(1), "SIZE");
    EXPECT_EQ(typeAt(2), "snd ");
    EXPECT_EQ(index("SIZE"), 1);
    EXPECT_LT(index("PNGf"), 0);
    EXPECT_EQ(FM_QuadChar_GetMacType(Quad("JPEG").p, Rec()), 0x4A504547u);

    EXPECT_EQ(add("JPEG", "again"), FMX_ERR_ALREADY_EXISTS);
    EXPECT_EQ(FM_BinaryData_GetCount(b, Rec()), 3);

    char part[4] = {};
    EXPECT_EQ(FM_BinaryData_GetData(b, 0, 5, 4, part, Rec()), FMX_NO_ERROR);
    EXPECT_EQ(std::string(part, 4), "byte");
    EXPECT_EQ(FM_BinaryData_GetData(b, 0, 8, 4, part, Rec()), FMX_ERR_PARAMETER);  // past the end
    EXPECT_EQ(FM_BinaryData_GetSize(b, 2, Rec()), 0u);
}

TEST_F(HostBinaryData, RemoveAndRemoveAll) {
    add("JPEG", "a");
    add("SIZE", "b");
    add("PICT", "c");
    EXPECT_TRUE(FM_BinaryData_Remove(b, Quad("SIZE").p, Rec()));
    EXPECT_FALSE(FM_BinaryData_Remove(b, Quad("SIZE").p, Rec()));
    EXPECT_EQ(typeAt(1), "PICT");
    EXPECT_EQ(index("PICT"), 1);

    FMX_BinaryData* copy = FM_BinaryData_Constructor2(b, Rec());
    FM_BinaryData_RemoveAll(b, Rec());
    EXPECT_EQ(FM_BinaryData_GetCount(b, Rec()), 0);
    EXPECT_EQ(FM_BinaryData_GetCount(copy, Rec()), 2);  // the copy is independent
    FM_BinaryData_Delete(copy, Rec());
}

TEST_F(HostBinaryData, FileNamesRoundTripThroughTheHostsOwnEncoding) {
    FMX_Text* name = FM_Text_Constructor1(Rec());
    FM_Text_Assign(name, "Überweisung März.pdf", FMX_ENCODING_UTF8, Rec());
    add("FILE", "%PDF");
    ASSERT_EQ(FM_BinaryData_AddFNAMData(b, name, Rec()), FMX_NO_ERROR);
    EXPECT_EQ(FM_BinaryData_AddFNAMData(b, name, Rec()), FMX_ERR_ALREADY_EXISTS);
    EXPECT_EQ(typeAt(1), "FNAM");

    // The stream is not the plain name: it is the host's encoding of it.
    int32_t at = index("FNAM");
    std::string raw(FM_BinaryData_GetSize(b, at, Rec()), '\0');
    FM_BinaryData_GetData(b, at, 0, static_cast<uint32_t>(raw.size()), raw.data(), Rec());
    EXPECT_NE(raw, "Überweisung März.pdf");

    FMX_Text* back = FM_Text_Constructor1(Rec());
    ASSERT_EQ(FM_BinaryData_GetFNAMData(b, back, Rec()), FMX_NO_ERROR);
    EXPECT_TRUE(FM_Text_operatorEQ(name, back, Rec()));

    // A stream named FNAM that was not written by the host is not a file name.
    FM_BinaryData_RemoveAll(b, Rec());
    add("FNAM", "");
    EXPECT_EQ(FM_BinaryData_GetFNAMData(b, back, Rec()), FMX_ERR_PARAMETER);
    FM_Text_Delete(back, Rec());
    FM_Text_Delete(name, Rec());
}

TEST_F(HostBinaryData, BadIndexesSetTheFailureRecord) {
    add("JPEG", "x");
    Rec r1, r2;
    EXPECT_EQ(FM_BinaryData_GetSize(b, 1, &r1), 0u);
    EXPECT_EQ(r1.code, FMX_RECORD_FAILED);
    char c;
    EXPECT_EQ(FM_BinaryData_GetData(b, -1, 0, 1, &c, &r2), FMX_ERR_PARAMETER);
    EXPECT_EQ(r2.code, FMX_RECORD_FAILED);
}

}  // namespace
