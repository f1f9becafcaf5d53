// Data values, numbers and argument vectors through the C API.
#include "call_record.h"

#include "api/values.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

std::u16string textOfData(const FMX_Data* d) {
    const FMX_Text* t = FM_Data_GetAsText(d, Rec());
    std::u16string out(FM_Text_GetSize(t, Rec()), u'\0');
    FM_Text_GetUnicode(t, reinterpret_cast<uint16_t*>(out.data()), 0, FMX_TEXT_ALL, Rec());
    return out;
}

TEST(HostNumbers, AsLongTruncatesTowardZeroAndSaturates) {
    FMX_FixPt* n = FM_FixPt_Constructor1(0, Rec());
    struct Case {
        double value;
        int32_t asLong;
        bool asBool;
    } cases[] = {{2.9, 2, true},   {-2.9, -2, true},          {0.4, 0, true}, {0, 0, false},
                 {-0.0, 0, false}, {1e12, INT32_MAX, true}, {-1e12, INT32_MIN, true}};
    for (const auto& c : cases) {
        FM_FixPt_AssignDouble(n, c.value, Rec());
        EXPECT_EQ(FM_FixPt_AsLong(n, Rec()), c.asLong) << c.value;
        EXPECT_EQ(FM_FixPt_AsBool(n, Rec()), c.asBool) << c.value;
    }
    Rec rec;
    FM_FixPt_AssignDouble(n, std::numeric_limits<double>::quiet_NaN(), &rec);
    EXPECT_EQ(rec.code, FMX_RECORD_FAILED);
    EXPECT_EQ(FM_FixPt_AsFloat(n, Rec()), -1e12);  // unchanged by the refused assignment
    FM_FixPt_Delete(n, Rec());
}

TEST(HostValues, NumbersAndTextsConvertTheWayCalculationsShowThem) {
    struct Case {
        double value;
        const char16_t* text;
    } cases[] = {{3, u"3"},         {-42, u"-42"},    {0.5, u"0.5"},       {1.0 / 3, u"0.333333333333333"},
                 {0.1 + 0.2, u"0.3"}, {1e15, u"1e+15"}, {123456.789, u"123456.789"}, {-0.0, u"0"}};
    for (const auto& c : cases) EXPECT_EQ(vdhost::formatNumber(c.value), c.text) << c.value;

    struct Parse {
        const char16_t* text;
        std::optional<double> value;
    } parses[] = {{u"3 apples", 3}, {u"-1.5", -1.5}, {u"1-2", 12}, {u".5", 0.5}, {u"abc", std::nullopt},
                  {u"", std::nullopt}, {u"a1b2.5.6", 12.56}};
    for (const auto& p : parses) EXPECT_EQ(vdhost::parseNumber(p.text), p.value);
}

TEST(HostData, SetAsTextHonoursTheNativeType) {
    FMX_Data* d = FM_Data_Constructor1(Rec());
    FMX_Text* t = FM_Text_Constructor1(Rec());
    FM_Text_Assign(t, "12.50 EUR", FMX_ENCODING_UTF8, Rec());

    EXPECT_EQ(FM_Data_SetAsText(d, t, nullptr, FMX_TYPE_NUMBER, Rec()), FMX_NO_ERROR);
    EXPECT_EQ(FM_Data_GetNativeType(d, Rec()), FMX_TYPE_NUMBER);
    EXPECT_EQ(FM_FixPt_AsFloat(FM_Data_GetAsNumber(d, Rec()), Rec()), 12.5);
    EXPECT_EQ(textOfData(d), u"12.5");

    FM_Data_SetAsText(d, t, nullptr, FMX_TYPE_TEXT, Rec());
    EXPECT_EQ(FM_Data_GetNativeType(d, Rec()), FMX_TYPE_TEXT);
    EXPECT_EQ(textOfData(d), u"12.50 EUR");
    EXPECT_EQ(FM_FixPt_AsLong(FM_Data_GetAsNumber(d, Rec()), Rec()), 12);

    // A container made from text is stored by reference: no streams, the text is its own.
    FM_Data_SetAsText(d, t, nullptr, FMX_TYPE_BINARY, Rec());
    EXPECT_EQ(FM_Data_GetNativeType(d, Rec()), FMX_TYPE_BINARY);
    EXPECT_EQ(FM_BinaryData_GetCount(FM_Data_GetBinaryData(d, Rec()), Rec()), 0);
    EXPECT_EQ(textOfData(d), u"12.50 EUR");
    EXPECT_FALSE(FM_Data_IsEmpty(d, Rec()));

    Rec rec;
    EXPECT_NE(FM_Data_SetAsText(d, t, nullptr, 99, &rec), FMX_NO_ERROR);
    EXPECT_EQ(rec.code, FMX_RECORD_FAILED);

    FM_Data_Clear(d, FMX_TYPE_TEXT, Rec());
    EXPECT_TRUE(FM_Data_IsEmpty(d, Rec()));
    FM_Text_Delete(t, Rec());
    FM_Data_Delete(d, Rec());
}

TEST(HostDataVect, IndexesOutOfRangeFailWithoutCrashing) {
    FMX_DataVect* v = FM_DataVect_Constructor1(Rec());
    FMX_Data* d = FM_Data_Constructor1(Rec());
    FMX_FixPt* n = FM_FixPt_Constructor1(7, Rec());
    FM_Data_SetAsNumber(d, n, FMX_TYPE_NUMBER, Rec());
    FM_DataVect_PushBack(v, d, Rec());
    FM_Data_Delete(d, Rec());  // the vector keeps its own copy

    EXPECT_EQ(FM_DataVect_Size(v, Rec()), 1u);
    EXPECT_EQ(FM_FixPt_AsLong(FM_DataVect_AtAsNumber(v, 0, Rec()), Rec()), 7);
    EXPECT_TRUE(FM_DataVect_AtAsBoolean(v, 0, Rec()));
    const FMX_Text* t = FM_DataVect_AtAsText(v, 0, Rec());
    EXPECT_EQ(FM_Text_GetSize(t, Rec()), 1u);

    Rec r1, r2, r3;
    EXPECT_EQ(FM_DataVect_At(v, 1, &r1), nullptr);
    EXPECT_EQ(r1.code, FMX_RECORD_FAILED);
    EXPECT_EQ(FM_DataVect_AtAsText(v, 5, &r2), nullptr);
    EXPECT_EQ(r2.code, FMX_RECORD_FAILED);
    EXPECT_FALSE(FM_DataVect_AtAsBoolean(v, 2, &r3));
    EXPECT_EQ(r3.code, FMX_RECORD_FAILED);

    FM_DataVect_Clear(v, Rec());
    EXPECT_EQ(FM_DataVect_Size(v, Rec()), 0u);
    FM_FixPt_Delete(n, Rec());
    FM_DataVect_Delete(v, Rec());
}

}  // namespace
