// What a calculation that does not parse reports, and where; deeply nested calculations are refused
// cleanly, long flat ones are fine.
#include "calc_test_support.h"

#include "api/values.h"
#include "calc/parser.h"

namespace vdhost::calc::testing {
namespace {

using SyntaxErrors = CalcTest;
constexpr auto Syntax = CalcError::Kind::Syntax;
constexpr auto Unknown = CalcError::Kind::UnknownName;

TEST_F(SyntaxErrors, MessagesAndPositions) {
    expectFailures({
        {"Left ( \"abc\" ; 2", Syntax, 1, 17, "Expected ) to close the call of Left"},
        {"(1 + 2", Syntax, 1, 7, "Expected ) to match the ( at line 1, column 1"},
        {"\"abc", Syntax, 1, 1, "Unterminated text literal"},
        {"1 + /* open", Syntax, 1, 5, "Unterminated comment"},
        {"Left ( \"a\" , 1 )", Syntax, 1, 12, "Unexpected character ,"},
        {"1 \"a very long text that goes on and on\"", Syntax, 1, 3, "Unexpected \"a very long text that goes on..."},
        {"12abc", Syntax, 1, 1, "Malformed number 12abc"},
        {"1e999", Syntax, 1, 1, "Number out of range 1e999"},
        {"$ + 1", Syntax, 1, 1, "Expected a variable name after $"},
        {"Left", Syntax, 1, 5, "Expected ( after Left"},
        {"Orders::", Syntax, 1, 9, "Expected a field name after Orders::"},
        {"nope", Unknown, 1, 1, "Unknown name nope"},
        {"If ( 1 )", Syntax, 1, 1, "If expects 2 to 3 parameters but was given 1"},
        {"Get ( Foo )", Unknown, 1, 7, "Unknown Get attribute Foo"},
        {"Let ( [ a = 1 ; b ] ; a )", Syntax, 1, 19, "Expected = after b in Let"},
        {"Substitute ( \"a\" ; [ \"b\" ; \"c\" ] ; \"d\" )", Syntax, 1, 1,
         "Substitute takes a text and then either a search text and its replacement, or only "
         "[ search ; replacement ] pairs"},
    });
}

TEST_F(SyntaxErrors, PositionsCountLinesAndCharactersFromWhereAScriptPlacesThem) {
    expectFailures({
        {"1 +\n  Nope ( 2 )", Unknown, 2, 3, "Unknown function Nope"},
        {"Let ( [\r\n  a = 1 ;\r\n  b = ] ; a )", Syntax, 3, 7, "Unexpected ]"},
        {"/* é\n 😀 */ \t1 ++", Syntax, 2, 12, "Unexpected end of the calculation"},
        {"Left ( \"ü\" ;\n  \"x\" ; 3 )", Syntax, 1, 1, "Left expects 2 parameters but was given 3"},
    });
    // A script can place the calculation in its file; the start column applies to the first line only.
    auto reported = [](std::u16string_view calculation) -> std::string {
        try {
            Expression::parse(calculation, 5, 10);
        } catch (const CalcError& e) {
            return e.what();
        }
        return "parsed";
    };
    EXPECT_EQ(reported(u"1 + nope"), "line 5, column 14: Unknown name nope");
    // The start column applies to the first line only.
    EXPECT_EQ(reported(u"1 +\nnope"), "line 6, column 1: Unknown name nope");
}

std::string repeat(const std::string& piece, int times) {
    std::string out;
    for (int i = 0; i < times; ++i) out += piece;
    return out;
}

using NestingTest = CalcTest;

TEST_F(NestingTest, TooDeepNestingIsASyntaxErrorNotACrash) {
    // The column is where the first level too many begins.
    const int tooDeep = kMaxNesting + 1;
    const std::string message =
        "The calculation is nested too deeply (more than " + std::to_string(kMaxNesting) + " levels)";
    expectFailures({
        {repeat("(", 10000) + "1" + repeat(")", 10000), Syntax, 1, tooDeep, message},
        {repeat("-", 10000) + "1", Syntax, 1, tooDeep - 1, message},  // the whole calculation is level 1
        {repeat("Abs ( ", 10000) + "1", Syntax, 1, 6 * (tooDeep - 1) + 1, message},
        // The text of the innermost call that fits is one level deeper than its call.
        {repeat("Substitute ( \"\" ; [ ", 5000), Syntax, 1, 20 * (tooDeep - 2) + 14, message},
    });
}

TEST_F(NestingTest, TheDeepestAllowedNestingEvaluatesAndFlatChainsCostNoDepth) {
    // Every level passes through every precedence level and nothing short-circuits, so evaluation
    // recurses as deep as a tree can get. Each level nests three times: the call, not and the sign.
    const int levels = (kMaxNesting - 1) / 3;
    std::string calculation =
        repeat("Abs ( 0 xor 1 and not 0 = 1 & 1 + 1 * 1 ^ -", levels) + "1" + repeat(" )", levels);
    EXPECT_EQ(text(calculation), "1");
    // Parentheses alone nest once per level, each holding a chain of every precedence level.
    const int deepest = kMaxNesting - 1;
    EXPECT_EQ(text(repeat("( 0 xor 1 and 1 = 1 & 1 + 0 * 1 ^ ", deepest) + "1" + repeat(" )", deepest)), "0");
    // Long flat chains cost no depth.
    const int terms = 50000;
    EXPECT_EQ(text("1" + repeat(" + 1", terms - 1)), std::to_string(terms));
    EXPECT_EQ(textOf(eval("\"\"" + repeat(" & \"ab\"", terms))).units.size(), 2u * terms);
    EXPECT_EQ(text("ValueCount ( List ( 1" + repeat(" ; 1", terms - 1) + " ) )"), std::to_string(terms));
}

}  // namespace
}  // namespace vdhost::calc::testing
