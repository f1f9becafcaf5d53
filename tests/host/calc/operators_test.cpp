// Precedence, associativity and the coercions the operators apply; GetAsNumber, Abs, Int, Round and
// Mod, and decimal rounding.
#include "calc_test_support.h"

#include "api/values.h"
#include "calc/decimal_rounding.h"

namespace vdhost::calc::testing {
namespace {

using OperatorTest = CalcTest;
constexpr auto Evaluation = CalcError::Kind::Evaluation;

TEST_F(OperatorTest, PrecedenceAndAssociativity) {
    expectTexts({
        {"1 + 2 * 3", "7"}, {"10 - 2 ^ 2 * 3", "-2"},
        {"1 + 2 & 3", "33"},          // + before &
        {"1 & 2 = 12", "1"},          // & before =
        {"not 1 = 2", "1"},           // not (1 = 2)
        {"1 or 0 and 0", "1"},        // and before or
        {"-2 ^ 2", "4"},              // the sign belongs to the operand
        {"10 - 4 - 3", "3"},
        {"2 ^ 3 ^ 2", "512"},         // right: 2 ^ 9
        {"1 or 1 xor 1", "0"},        // (1 or 1) xor 1
        {"3 > 2 > 1", "0"},           // (3 > 2) is 1, and 1 > 1 is false
    });
}

TEST_F(OperatorTest, ComparisonIsNumericWhenEitherSideIsANumberAndIgnoresCaseOtherwise) {
    expectTexts({
        {"\"12\" < \"9\"", "1"},      // two texts: compared as text
        {"\"12\" < 9", "0"},          // one number: compared as numbers
        {"\"3 apples\" = 3", "1"},
        {"(1 = 1) = \"1.0\"", "1"},   // a boolean is numeric too
        {"(1 ≤ 1) & (2 ≥ 3) & (2 >= 2) & (2 <= 1) & (1 <> 2)", "10101"},  // every spelling
        // Two texts compare without regard to case.
        {"\"abc\" = \"ABC\"", "1"}, {"\"É\" = \"é\"", "1"}, {"\"abc\" ≠ \"ABC\"", "0"},
    });
}

TEST_F(OperatorTest, ConcatenationAndArithmeticConvertTheirOperandsAndTypeTheirResults) {
    expectTexts({
        {"\"x\" & 1.50", "x1.5"},     // the text form of a number
        {"1/3 & \"|\" & 1e15 & \"|\" & -0", "0.333333333333333|1e+15|0"}, {"\"abc\" + 1", "1"},
        {"\"1,5 kg\" * 2", "30"},     // digits and the first point count, nothing else
    });
    EXPECT_EQ(eval("1 = 1").type, FMX_TYPE_BOOLEAN);
    EXPECT_EQ(eval("1 & 2").type, FMX_TYPE_TEXT);
    EXPECT_EQ(eval("\"2\" + 0").type, FMX_TYPE_NUMBER);
}

TEST_F(OperatorTest, ArithmeticFailuresAreReportedAtTheOperator) {
    expectFailures({
        {"1 / 0", Evaluation, 1, 3, "Division by zero"},
        {"10 ^ 400", Evaluation, 1, 4, "Number out of range"},
        {"(-8) ^ 0.5", Evaluation, 1, 6, "Number out of range"},
        {"1 + Mod ( 1 ; 0 )", Evaluation, 1, 5, "Division by zero"},  // at the call
    });
}

using NumberFunctionTest = CalcTest;

TEST_F(NumberFunctionTest, Results) {
    expectTexts({
        {"GetAsNumber ( \"a1b2.5\" )", "12.5"}, {"GetAsNumber ( \"abc\" )", ""}, {"GetAsNumber ( 1 = 1 )", "1"},
        {"Int ( -2.7 )", "-2"},
        {"Mod ( -7 ; 3 )", "2"},        // the sign of the divisor
        {"Round ( 1.005 ; 2 )", "1.01"},   // as written, not as the nearest double
        {"Round ( -2.5 ; 0 )", "-3"}, {"Round ( 1250 ; -2 )", "1300"},
        {"Round ( 2.345 ; 1.9 )", "2.3"},   // places are whole
    });
    EXPECT_EQ(eval("GetAsNumber ( \"7\" )").type, FMX_TYPE_NUMBER);
}

TEST(DecimalRounding, ExtremeMagnitudes) {
    EXPECT_DOUBLE_EQ(roundToPlaces(1.5e-300, 2), 0);
    EXPECT_DOUBLE_EQ(roundToPlaces(999999999999999.0, -1), 1e15);
    EXPECT_DOUBLE_EQ(roundToPlaces(0.1 + 0.2, 15), 0.3);  // the shown form is 0.3
}

}  // namespace
}  // namespace vdhost::calc::testing
