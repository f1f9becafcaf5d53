// Calls of functions that plug-ins registered; If, Case, and and or evaluate only what decides the
// result.
#include "calc_test_support.h"

#include "api/function_registry.h"
#include "api/values.h"

#include <stdexcept>
#include <vector>

namespace vdhost::calc::testing {
namespace {

std::vector<std::string> echoed;  // Test_Echo's arguments as text, in call order
const FMX_ExprEnv* lastEnvironment = nullptr;  // the environment Test_Echo last received

// External functions registered for the calculation tests under the plug-in id 'TEST', for the
// lifetime of an ExternalFunctionTest:
//   Test_Echo ( value ; ... )     answers its first argument; logs it
//   Test_Fail ( {code} )          fails with the code (7 when none is given)
//   Test_Throw                    throws a C++ exception
//   Test_Range ( a )              answers its function id (4)...
//   Test_Range ( a ; b ; {c} )    ...registered again with another id (5) for two or three arguments
//   Test_Now                      42, called without parentheses
//   Length ( x )                  a plug-in function under a built-in's name: never reached
//   Test_Evaluate ( text )        evaluates the text through the expression environment's host
//   Test_Unregister               unregisters itself while it runs and answers "gone"
constexpr uint32_t kTestPlugin = 0x54455354;  // 'TEST'

// One handler for all of them, told apart by their ids.
FMX_ErrCode handle(int16_t id, const FMX_ExprEnv* env, const FMX_DataVect* args, FMX_Data* result) {
    switch (id) {
    case 1:  // Test_Echo
        lastEnvironment = env;
        echoed.push_back(utf8Of(args->items[0]));
        *result = args->items[0];
        return 0;
    case 2: return args->items.empty() ? FMX_ErrCode{7} : static_cast<FMX_ErrCode>(numberOf(args->items[0]));
    case 3: throw std::runtime_error("handler exploded");
    case 6: *result = makeNumber(42); return 0;
    case 7: *result = makeText(u"plug-in"); return 0;
    case 8: return env->host->evaluate(textOf(args->items[0]).units, *result);
    case 9: FunctionRegistry::instance().remove(kTestPlugin, id); *result = makeText(u"gone"); return 0;
    default: *result = makeNumber(id); return 0;  // Test_Range
    }
}

struct Registration { int16_t id; const char16_t* name; int16_t minArgs, maxArgs; };

constexpr Registration kRegistrations[] = {
    {1, u"Test_Echo", 1, -1},   {2, u"Test_Fail", 0, 1}, {3, u"Test_Throw", 0, 0},
    {4, u"Test_Range", 1, 1},   {5, u"Test_Range", 2, 3}, {6, u"Test_Now", 0, 0},
    {7, u"Length", 1, 1},       {8, u"Test_Evaluate", 1, 1}, {9, u"Test_Unregister", 0, 0},
};

class ExternalFunctionTest : public CalcTest {
protected:
    ExternalFunctionTest() {
        echoed.clear();
        lastEnvironment = nullptr;
        for (const auto& r : kRegistrations) {
            const std::u16string prototype = std::u16string(r.name) + u" ( ... )";
            ExternalFunction f{kTestPlugin, r.id, r.name, prototype, r.minArgs, r.maxArgs, 0, handle};
            if (FunctionRegistry::instance().add(std::move(f)) != FMX_NO_ERROR)
                throw std::logic_error("test functions are already registered");
        }
    }
    ~ExternalFunctionTest() override {
        for (const auto& r : kRegistrations) FunctionRegistry::instance().remove(kTestPlugin, r.id);
    }
};

TEST_F(ExternalFunctionTest, HandlersReceiveEvaluatedArgumentsAndTheEnvironment) {
    EXPECT_EQ(text("Test_Echo ( \"a\" & 1 + 1 ; \"ignored\" )"), "a2");
    EXPECT_EQ(lastEnvironment, context.exprEnv());
    EXPECT_EQ(eval("Test_Echo ( 1 = 1 )").type, FMX_TYPE_BOOLEAN);  // values arrive with their type
    EXPECT_EQ(text("test_ECHO ( \"any case\" )"), "any case");
}

TEST_F(ExternalFunctionTest, CallsFindTheirRegistrationByNameAndArgumentCountWhenParsed) {
    expectTexts({
        {"Test_Now + 1", "43"},        // no arguments: the parentheses may be left out
        {"Test_Range ( 1 )", "4"},     // the registration whose range holds the count
        {"Test_Range ( 1 ; 2 )", "5"},
        {"Length ( \"abc\" )", "3"},  // built-in names come first
    });
    // Unknown functions and wrong counts fail when the calculation is parsed.
    constexpr auto Syntax = CalcError::Kind::Syntax;
    expectFailures({
        {"1 + Test_Echo", Syntax, 1, 14, "Expected ( after Test_Echo"},
        {"Test_Echo ( )", Syntax, 1, 1, "Test_Echo expects at least 1 parameter but was given 0 (Test_Echo ( ... ))"},
        {"Test_Fail ( 1 ; 2 )", Syntax, 1, 1,
         "Test_Fail expects 0 to 1 parameters but was given 2 (Test_Fail ( ... ))"},
        {"Test_Range ( 1 ; 2 ; 3 ; 4 )", Syntax, 1, 1, "Test_Range expects 1 to 3 parameters but was given 4"},
    });
}

TEST_F(ExternalFunctionTest, HandlerErrorsCarryNameAndCode) {
    constexpr auto Handler = CalcError::Kind::Handler;
    expectFailures({
        {"Test_Fail", Handler, 1, 1, "Test_Fail failed with error 7"},
        {"1 +\n   test_fail ( 1101 )", Handler, 2, 4, "Test_Fail failed with error 1101"},
        {"\"é\" & Test_Throw", Handler, 1, 7, "Test_Throw failed with error -1 (it threw an exception)"},
    });
    CalcError e = failure("Test_Fail ( -3 )");
    EXPECT_EQ(e.handlerCode, -3);
    EXPECT_EQ(e.functionName, "Test_Fail");
    EXPECT_EQ(failure("Test_Throw").handlerCode, -1);
}

TEST_F(ExternalFunctionTest, AFunctionUnregisteredAfterParsingFailsCleanly) {
    auto expression = Expression::parse(u"Test_Unregister");
    EXPECT_EQ(utf8Of(expression->evaluate(context, locals)), "gone");
    try {
        expression->evaluate(context, locals);
        FAIL() << "the second call should fail";
    } catch (const CalcError& e) {
        EXPECT_EQ(e.kind, CalcError::Kind::UnknownName);
        EXPECT_EQ(e.message, "Function Test_Unregister is no longer registered");
    }
}

TEST_F(ExternalFunctionTest, HandlersMayEvaluateCalculations) {
    EXPECT_EQ(text("Test_Evaluate ( \"Test_Evaluate ( \\\"1 + 1\\\" ) & \\\"!\\\"\" )"), "2!");
    // A calculation that evaluates itself is stopped, and the failure travels back up as the
    // code each level's handler answered.
    context.globalVariables.set(u"$$self", makeText(u"Test_Evaluate ( $$self )"));
    CalcError e = failure("Test_Evaluate ( $$self )");
    EXPECT_EQ(e.kind, CalcError::Kind::Handler);
    EXPECT_EQ(e.handlerCode, FMX_ERR_CALCULATION);
}

using ControlFlowTest = ExternalFunctionTest;

TEST_F(ControlFlowTest, BranchesAndTestsThatDoNotDecideAreNotEvaluated) {
    expectTexts({
        {"If ( \"abc\" ; 1 ; 2 )", "2"},  // text without a number is false
        {"If ( 1 ; 1 ; Test_Fail )", "1"}, {"Case ( 0 ; Test_Fail ; 1 ; \"b\" ; Test_Fail )", "b"},
        {"0 and Test_Fail", "0"}, {"1 or Test_Fail", "1"},
    });
}

TEST_F(ControlFlowTest, TheDecidingSideIsEvaluated) {
    for (const char* calculation : {"If ( 0 ; 1 ; Test_Fail )", "1 and Test_Fail", "0 or Test_Fail",
                                    "1 xor Test_Fail", "Case ( 0 ; 1 ; Test_Fail )"})
        EXPECT_EQ(failure(calculation).kind, CalcError::Kind::Handler) << calculation;
    // Untaken branches must still parse.
    EXPECT_EQ(failure("If ( 1 ; 1 ; Nope ( 1 ) )").kind, CalcError::Kind::UnknownName);
    EXPECT_EQ(failure("If ( 1 ; 1 ; Left ( 1 ) )").kind, CalcError::Kind::Syntax);
}

TEST_F(ControlFlowTest, ArgumentsAreEvaluatedLeftToRight) {
    EXPECT_EQ(text("Test_Echo ( \"a\" ) & Test_Echo ( \"b\" ) & Test_Echo ( \"c\" )"), "abc");
    // ^ combines from the right but still evaluates from the left.
    EXPECT_EQ(text("Test_Echo ( 2 ) ^ Test_Echo ( 3 ) ^ Test_Echo ( 2 )"), "512");
    EXPECT_EQ(echoed, (std::vector<std::string>{"a", "b", "c", "2", "3", "2"}));
}

}  // namespace
}  // namespace vdhost::calc::testing
