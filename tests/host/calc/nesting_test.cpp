// Deeply nested calculations are refused cleanly; long flat ones are fine.
#include "calc_test_support.h"

#include "api/values.h"
#include "calc/parser.h"

namespace vdhost::calc::testing {
namespace {

std::string repeat(const std::string& piece, int times) {
    std::string out;
    for (int i = 0; i < times; ++i) out += piece;
    return out;
}

using NestingTest = CalcTest;
constexpr auto Syntax = CalcError::Kind::Syntax;

TEST_F(NestingTest, TooDeepNestingIsASyntaxErrorNotACrash) {
    // The column is where the first level too many begins.
    const int tooDeep = kMaxNesting + 1;
    const std::string message =
        "The calculation is nested too deeply (more than " + std::to_string(kMaxNesting) + " levels)";
    expectFailures({
        {repeat("(", 10000), Syntax, 1, tooDeep, message},
        {repeat("(", 10000) + "1" + repeat(")", 10000), Syntax, 1, tooDeep, message},
        {repeat("-", 10000) + "1", Syntax, 1, tooDeep - 1, message},  // the whole calculation is level 1
        {repeat("not ", 10000) + "1", Syntax, 1, 4 * (tooDeep - 2) + 1, message},
        {repeat("Abs ( ", 10000) + "1", Syntax, 1, 6 * (tooDeep - 1) + 1, message},
        {repeat("Let ( a = ", 10000), Syntax, 1, 10 * (tooDeep - 1) + 1, message},
        // The text of the innermost call that fits is one level deeper than its call.
        {repeat("Substitute ( \"\" ; [ ", 5000), Syntax, 1, 20 * (tooDeep - 2) + 14, message},
    });
}

TEST_F(NestingTest, TheDeepestAllowedNestingEvaluates) {
    // Every level passes through every precedence level and nothing short-circuits, so evaluation
    // recurses as deep as a tree can get. Each level nests three times: the call, not and the sign.
    const int levels = (kMaxNesting - 1) / 3;
    std::string calculation =
        repeat("Abs ( 0 xor 1 and not 0 = 1 & 1 + 1 * 1 ^ -", levels) + "1" + repeat(" )", levels);
    EXPECT_EQ(text(calculation), "1");
    // Parentheses alone nest once per level, each holding a chain of every precedence level.
    const int deepest = kMaxNesting - 1;
    EXPECT_EQ(text(repeat("( 0 xor 1 and 1 = 1 & 1 + 0 * 1 ^ ", deepest) + "1" + repeat(" )", deepest)), "0");
}

TEST_F(NestingTest, LongFlatChainsCostNoDepth) {
    const int terms = 50000;
    EXPECT_EQ(text("1" + repeat(" + 1", terms - 1)), std::to_string(terms));
    EXPECT_EQ(text("2" + repeat(" ^ 1", terms - 1)), "2");
    EXPECT_EQ(textOf(eval("\"\"" + repeat(" & \"ab\"", terms))).units.size(), 2u * terms);
    EXPECT_EQ(text("ValueCount ( List ( 1" + repeat(" ; 1", terms - 1) + " ) )"), std::to_string(terms));
    EXPECT_EQ(text("Case ( " + repeat("0 ; 0 ; ", terms) + "\"end\" )"), "end");
}

}  // namespace
}  // namespace vdhost::calc::testing
