// Precedence, associativity and the coercions the operators apply.
#include "calc_test_support.h"

#include "api/values.h"

namespace vdhost::calc::testing {
namespace {

struct Case {
    const char* calculation;
    const char* expected;  // the result's text
};

class OperatorTest : public CalcTest {
protected:
    void expectAll(std::initializer_list<Case> cases) {
        for (const Case& c : cases) {
            SCOPED_TRACE(c.calculation);
            EXPECT_EQ(text(c.calculation), c.expected);
        }
    }
};

TEST_F(OperatorTest, PrecedenceFromLoosestToTightest) {
    expectAll({
        {"1 + 2 * 3", "7"},
        {"(1 + 2) * 3", "9"},
        {"2 * 3 ^ 2", "18"},
        {"10 - 2 ^ 2 * 3", "-2"},
        {"2 * 3 - 4 / 2", "4"},
        {"1 + 2 & 3", "33"},          // + before &
        {"\"a\" & 1 + 2", "a3"},
        {"1 & 2 = 12", "1"},          // & before =
        {"not 1 = 2", "1"},           // not (1 = 2)
        {"not 0 and 0", "0"},         // (not 0) and 0
        {"1 or 0 and 0", "1"},        // and before or
        {"0 and 1 or 1", "1"},
        {"1 = 1 and 2 ≠ 3", "1"},
        {"NOT 0 AnD 1", "1"},         // keywords in any case
        {"-2 ^ 2", "4"},              // the sign belongs to the operand
        {"2 ^ -1", "0.5"},
        {"3 - -2", "5"},
        {"- - 2", "2"},
        {"+\"7\" + 1", "8"},
    });
}

TEST_F(OperatorTest, Associativity) {
    expectAll({
        {"10 - 4 - 3", "3"},
        {"100 / 10 / 5", "2"},
        {"2 ^ 3 ^ 2", "512"},         // right: 2 ^ 9
        {"1 or 1 xor 1", "0"},        // (1 or 1) xor 1
        {"1 xor 1 or 1", "1"},
        {"3 > 2 > 1", "0"},           // (3 > 2) is 1, and 1 > 1 is false
        {"1 < 2 = 1", "1"},
    });
}

TEST_F(OperatorTest, ComparisonIsNumericWhenEitherSideIsANumber) {
    expectAll({
        {"\"12\" < \"9\"", "1"},      // two texts: compared as text
        {"\"12\" < 9", "0"},          // one number: compared as numbers
        {"\"3 apples\" = 3", "1"},
        {"\"\" = 0", "1"},
        {"(1 = 1) = \"1.0\"", "1"},   // a boolean is numeric too
        {"1 ≤ 1", "1"},
        {"2 ≥ 3", "0"},
        {"2 >= 2", "1"},
        {"2 <= 1", "0"},
        {"1 <> 2", "1"},
    });
}

TEST_F(OperatorTest, TextComparisonIgnoresCase) {
    expectAll({
        {"\"abc\" = \"ABC\"", "1"},
        {"\"É\" = \"é\"", "1"},
        {"\"B\" > \"a\"", "1"},
        {"\"abc\" < \"abd\"", "1"},
        {"\"ab\" < \"abc\"", "1"},
        {"\"abc\" <> \"abd\"", "1"},
        {"\"abc\" ≠ \"ABC\"", "0"},
    });
}

TEST_F(OperatorTest, ConcatenationUsesTextForms) {
    expectAll({
        {"\"x\" & 1.50", "x1.5"},
        {"1 & 2", "12"},
        {"True & False", "10"},
        {"\"a\" & \"\" & \"b\"", "ab"},
        {"0.1 + 0.2 & \"\"", "0.3"},
    });
}

TEST_F(OperatorTest, ArithmeticReadsNumbersOutOfText) {
    expectAll({
        {"\"2\" * \"3\"", "6"},
        {"\"abc\" + 1", "1"},
        {"\"1,5 kg\" * 2", "30"},     // digits and the first point count, nothing else
        {"(1 = 1) + 1", "2"},
        {"7 / 2", "3.5"},
    });
}

TEST_F(OperatorTest, ResultTypes) {
    EXPECT_EQ(eval("1 = 1").type, FMX_TYPE_BOOLEAN);
    EXPECT_EQ(eval("not 1").type, FMX_TYPE_BOOLEAN);
    EXPECT_EQ(eval("1 or 0").type, FMX_TYPE_BOOLEAN);
    EXPECT_EQ(eval("1 & 2").type, FMX_TYPE_TEXT);
    EXPECT_EQ(eval("\"2\" + 0").type, FMX_TYPE_NUMBER);
    EXPECT_EQ(eval("-\"2\"").type, FMX_TYPE_NUMBER);
}

TEST_F(OperatorTest, ArithmeticFailuresAreReportedAtTheOperator) {
    struct Failure {
        const char* calculation;
        int column;
        const char* message;
    };
    for (const Failure& f : std::initializer_list<Failure>{
             {"1 / 0", 3, "Division by zero"},
             {"1 + 2 / (3 - 3)", 7, "Division by zero"},
             {"10 ^ 400", 4, "Number out of range"},
             {"1e300 * 1e300", 7, "Number out of range"},
             {"(-8) ^ 0.5", 6, "Number out of range"},
         }) {
        SCOPED_TRACE(f.calculation);
        CalcError e = failure(f.calculation);
        EXPECT_EQ(e.kind, CalcError::Kind::Evaluation);
        EXPECT_EQ(e.column, f.column);
        EXPECT_EQ(e.message, f.message);
    }
}

}  // namespace
}  // namespace vdhost::calc::testing
