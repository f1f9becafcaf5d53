// If, Case, and and or evaluate only what decides the result.
#include "calc_test_support.h"
#include "test_functions.h"

namespace vdhost::calc::testing {
namespace {

class ControlFlowTest : public CalcTest {
protected:
    TestFunctions functions;
};

TEST_F(ControlFlowTest, IfAndCaseChooseTheFirstTrueTest) {
    expectTexts({
        {"If ( 1 ; \"y\" ; \"n\" )", "y"},
        {"If ( 0 ; \"y\" )", ""},
        {"If ( \"abc\" ; 1 ; 2 )", "2"},      // text without a number is false
        {"If ( \"0.5\" ; 1 ; 2 )", "1"},
        {"Case ( 0 ; \"a\" ; 1 ; \"b\" ; \"c\" )", "b"},
        {"Case ( 0 ; \"a\" ; 0 ; \"b\" )", ""},
    });
}

TEST_F(ControlFlowTest, BranchesAndTestsThatDoNotDecideAreNotEvaluated) {
    expectTexts({
        {"If ( 1 ; 1 ; Test_Fail )", "1"},
        {"Case ( 0 ; Test_Fail ; 1 ; \"b\" ; Test_Fail )", "b"},
        {"Case ( 1 ; \"a\" ; Test_Fail ; \"b\" )", "a"},   // later tests are not evaluated either
        {"0 and Test_Fail", "0"},
        {"1 or Test_Fail", "1"},
    });
}

TEST_F(ControlFlowTest, TheDecidingSideIsEvaluated) {
    for (const char* calculation : {"If ( 0 ; 1 ; Test_Fail )", "1 and Test_Fail", "0 or Test_Fail",
                                    "1 xor Test_Fail", "Case ( 0 ; 1 ; Test_Fail )"}) {
        SCOPED_TRACE(calculation);
        EXPECT_EQ(failure(calculation).kind, CalcError::Kind::Handler);
    }
}

TEST_F(ControlFlowTest, UntakenBranchesMustStillParse) {
    EXPECT_EQ(failure("If ( 1 ; 1 ; Nope ( 1 ) )").kind, CalcError::Kind::UnknownName);
    EXPECT_EQ(failure("If ( 1 ; 1 ; Left ( 1 ) )").kind, CalcError::Kind::Syntax);
}

TEST_F(ControlFlowTest, ArgumentsAreEvaluatedLeftToRight) {
    EXPECT_EQ(text("Test_Echo ( \"a\" ) & Test_Echo ( \"b\" ) & Test_Echo ( \"c\" )"), "abc");
    // ^ combines from the right but still evaluates from the left.
    EXPECT_EQ(text("Test_Echo ( 2 ) ^ Test_Echo ( 3 ) ^ Test_Echo ( 2 )"), "512");
    EXPECT_EQ(TestFunctions::echoed(), (std::vector<std::string>{"a", "b", "c", "2", "3", "2"}));
}

}  // namespace
}  // namespace vdhost::calc::testing
