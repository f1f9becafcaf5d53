// Text and number literals, the ¶ constant and comments, and whether a script statement continues
// on the next line.
#include "calc_test_support.h"

#include "api/text_codec.h"
#include "api/values.h"
#include "calc/continuation.h"

namespace vdhost::calc::testing {
namespace {

using LiteralTest = CalcTest;

TEST_F(LiteralTest, TextEscapesPilcrowsAndComments) {
    expectTexts({
        {R"("a\"b")", "a\"b"},
        {R"("a\\b")", "a\\b"},
        {"\"a¶b\"", "a\rb"},          // ¶ inside a literal is a carriage return
        {"\"a\\¶b\"", "a¶b"},         // \¶ is the pilcrow itself
        {R"("a\nb")", "a\\nb"},       // no other escapes: the backslash stays
        {"\"line\none\"", "line\none"},
    });
    // Comments are skipped, outside texts only.
    EXPECT_EQ(text("1 // one\n + 2 // two"), "3");
    EXPECT_EQ(text("1 /* ( \"unbalanced */ + 2"), "3");
    EXPECT_EQ(text("\"// not a comment\""), "// not a comment");
}

TEST_F(LiteralTest, Numbers) {
    expectTexts({{".5", "0.5"}, {"1.5E-1", "0.15"}, {"1.", "1"}, {"1e-400", "0"}});
    EXPECT_EQ(eval("1.").type, FMX_TYPE_NUMBER);
}

TEST(NeedsContinuation, OpenTextsCommentsParenthesesAndBrackets) {
    struct Case { const char* text; bool continues; };
    for (const Case& c : std::initializer_list<Case>{
             {"Left ( \"a\" ;", true},
             {"Left ( \"a\" ; 1 )", false},
             {"\"open", true},
             {"\"a\\\"", true},              // the escaped quote does not close it
             {"\"(\" & \"[\"", false},       // brackets inside texts do not count
             {"/* open", true},
             {"1 // (", false},              // nor inside line comments
             {"Substitute ( x ; [ \"a\" ; \"b\" ]", true},
             {"1 # (", true},                // a stray character does not stop the count
             {"$x := \"é¶\" & ¶ & (", true},
         }) {
        SCOPED_TRACE(c.text);
        EXPECT_EQ(needsContinuation(utf8ToUtf16(c.text)), c.continues);
    }
}

}  // namespace
}  // namespace vdhost::calc::testing
