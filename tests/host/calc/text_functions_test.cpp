// The built-in text, search and value-list functions, at the edges that matter.
#include "calc_test_support.h"

#include "api/text_codec.h"
#include "api/values.h"

namespace vdhost::calc::testing {
namespace {

using TextFunctionTest = CalcTest;

TEST_F(TextFunctionTest, LengthsAndPositionsCountUtf16UnitsAndHoldToTheText) {
    expectTexts({
        {"Length ( 12.50 )", "4"},      // the text form, "12.5"
        {"Length ( \"é😀\" )", "3"},    // the emoji takes two units
        {"Left ( \"abcdef\" ; 2 )", "ab"}, {"Left ( \"abc\" ; -1 )", ""}, {"Right ( \"abcdef\" ; 2 )", "ef"},
        {"Middle ( \"abcdef\" ; 2 ; 3 )", "bcd"},
        {"Middle ( \"abc\" ; 3 ; 10 )", "c"},     // beyond the end
        {"Middle ( \"abc\" ; 0 ; 2 )", "a"},      // positions before 1 are cut off
        {"Middle ( \"abc\" ; 1 ; 1e300 )", "abc"},
    });
}

TEST_F(TextFunctionTest, Substitute) {
    expectTexts({
        {"Substitute ( \"a-b-c\" ; \"-\" ; \"+\" )", "a+b+c"},
        {"Substitute ( \"aAa\" ; \"a\" ; \"b\" )", "bAb"},         // the search is case-sensitive
        {"Substitute ( \"aaa\" ; \"aa\" ; \"b\" )", "ba"},          // left to right, no overlaps
        {"Substitute ( \"aXa\" ; \"a\" ; \"aa\" )", "aaXaa"},       // replacements are not searched again
        // Each pair works on the result of the ones before it.
        {"Substitute ( \"abc\" ; [ \"a\" ; \"b\" ] ; [ \"b\" ; \"c\" ] )", "ccc"},
        {"Substitute ( \"abc\" ; [ \"b\" ; \"c\" ] ; [ \"a\" ; \"b\" ] )", "bcc"},
        {"Substitute ( 1234 ; [ 2 ; \"two\" ] ; [ \"3\" ; \"\" ] )", "1two4"},
    });
}

TEST_F(TextFunctionTest, PatternCountAndPositionIgnoreCaseAndFindOverlaps) {
    expectTexts({
        {"PatternCount ( \"aaa\" ; \"aa\" )", "2"}, {"PatternCount ( \"ABC abc\" ; \"b\" )", "2"},
        {"Position ( \"Mississippi\" ; \"ss\" ; 1 ; 2 )", "6"},
        {"Position ( \"Mississippi\" ; \"iss\" ; 11 ; -1 )", "5"},   // backwards from the start
        {"Position ( \"Mississippi\" ; \"iss\" ; 4 ; -1 )", "2"}, {"Position ( \"aaa\" ; \"aa\" ; 1 ; 2 )", "2"},
        {"Position ( \"abc\" ; \"c\" ; 0 ; 1 )", "3"}, {"Position ( \"abc\" ; \"a\" ; 1 ; 0 )", "0"},
    });
}

TEST_F(TextFunctionTest, CaseTrimExactConversionsAndValueLists) {
    expectTexts({
        {"Upper ( \"aBc é\" )", "ABC É"}, {"Lower ( \"ÀB×\" )", "àb×"}, {"Trim ( \"  a b  \" )", "a b"},
        {"Trim ( \"¶a \" )", "\ra"},     // only spaces
        {"Exact ( \"a\" ; \"A\" )", "0"}, {"IsEmpty ( \"\" )", "1"},

        {"List ( \"a\" ; \"\" ; 2 ; \"b\" )", "a\r2\rb"}, {"List ( \"\" ; $nothing )", ""},
        {"ValueCount ( \"a¶b¶\" )", "2"},     // a trailing return ends the last value
        {"ValueCount ( \"¶a\" )", "2"},       // a leading one starts an empty value
        {"ValueCount ( \"a\r\nb\nc\" )", "3"}, {"GetValue ( \"a¶b¶c\" ; 2 )", "b"}, {"GetValue ( \"¶b\" ; 1 )", ""},
    });
    EXPECT_EQ(eval("GetAsText ( 2 )").type, FMX_TYPE_TEXT);
}

TEST_F(TextFunctionTest, QuoteReadsBackAsTheSameText) {
    EXPECT_EQ(text("Quote ( \"say \\\"hi\\\"\" )"), R"("say \"hi\"")");
    for (const char16_t* original : {u"", u"\\\"¶\r"}) {
        locals.set(u"$original", makeText(original));
        std::u16string quoted = textOf(eval("Quote ( $original )")).units;
        SCOPED_TRACE(utf16ToUtf8(quoted));
        EXPECT_EQ(textOf(calc::evaluate(quoted, context, locals)).units, original);
    }
}

}  // namespace
}  // namespace vdhost::calc::testing
