// Whether a script statement continues on the next line.
#include "api/text_codec.h"
#include "calc/continuation.h"

#include <gtest/gtest.h>

namespace vdhost::calc {
namespace {

TEST(NeedsContinuation, OpenTextsCommentsParenthesesAndBrackets) {
    struct Case {
        const char* text;
        bool continues;
    };
    for (const Case& c : std::initializer_list<Case>{
             {"", false},
             {"Left ( \"a\" ;", true},
             {"Left ( \"a\" ; 1 )", false},
             {"\"open", true},
             {"\"a\\\"", true},              // the escaped quote does not close it
             {"\"(\" & \"[\"", false},       // brackets inside texts do not count
             {"/* open", true},
             {"/* ( closed */ 1", false},
             {"1 // (", false},              // nor inside line comments
             {"Let ( [ a = 1 ] ;", true},
             {"Substitute ( x ; [ \"a\" ; \"b\" ]", true},
             {"(1))", false},
             {"1 # (", true},                // a stray character does not stop the count
             {"$x := \"é¶\" & ¶ & (", true},
         }) {
        SCOPED_TRACE(c.text);
        EXPECT_EQ(needsContinuation(utf8ToUtf16(c.text)), c.continues);
    }
}

}  // namespace
}  // namespace vdhost::calc
