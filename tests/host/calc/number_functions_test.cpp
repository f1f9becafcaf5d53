// GetAsNumber, Abs, Int, Round and Mod, and decimal rounding.
#include "calc_test_support.h"

#include "api/values.h"
#include "calc/decimal_rounding.h"

namespace vdhost::calc::testing {
namespace {

using NumberFunctionTest = CalcTest;

TEST_F(NumberFunctionTest, Results) {
    expectTexts({
        {"GetAsNumber ( \"a1b2.5\" )", "12.5"},
        {"GetAsNumber ( \"-3 kg\" )", "-3"},
        {"GetAsNumber ( \"abc\" )", ""},
        {"GetAsNumber ( 1 = 1 )", "1"},
        {"Abs ( -2.5 )", "2.5"},
        {"Int ( -2.7 )", "-2"},
        {"Mod ( -7 ; 3 )", "2"},        // the sign of the divisor
        {"Mod ( 7 ; -3 )", "-2"},
        {"Mod ( 5.5 ; 2 )", "1.5"},
        {"Round ( 1.005 ; 2 )", "1.01"},   // as written, not as the nearest double
        {"Round ( -2.5 ; 0 )", "-3"},
        {"Round ( 9.999 ; 2 )", "10"},
        {"Round ( 1250 ; -2 )", "1300"},
        {"Round ( 55 ; -3 )", "0"},
        {"Round ( 0.0005 ; 3 )", "0.001"},
        {"Round ( 2.345 ; 1.9 )", "2.3"},   // places are whole
    });
    EXPECT_EQ(eval("GetAsNumber ( \"7\" )").type, FMX_TYPE_NUMBER);
}

TEST_F(NumberFunctionTest, ModByZeroFailsAtTheCall) {
    CalcError e = failure("1 + Mod ( 1 ; 0 )");
    EXPECT_EQ(e.kind, CalcError::Kind::Evaluation);
    EXPECT_EQ(e.message, "Division by zero");
    EXPECT_EQ(e.column, 5);
}

TEST(DecimalRounding, ExtremeMagnitudes) {
    EXPECT_DOUBLE_EQ(roundToPlaces(1e20, 2), 1e20);       // nothing to round
    EXPECT_DOUBLE_EQ(roundToPlaces(1.5e-300, 2), 0);
    EXPECT_DOUBLE_EQ(roundToPlaces(999999999999999.0, -1), 1e15);
    EXPECT_DOUBLE_EQ(roundToPlaces(0.1 + 0.2, 15), 0.3);  // the shown form is 0.3
}

}  // namespace
}  // namespace vdhost::calc::testing
