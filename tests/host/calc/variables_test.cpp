// Let's plain names, $ variables of the evaluation scope, $$ variables of the session, field
// references and Get ( FilePath ).
#include "calc_test_support.h"

#include "api/text_codec.h"
#include "api/values.h"

namespace vdhost::calc::testing {
namespace {

using VariableTest = CalcTest;

TEST_F(VariableTest, LetBindsNamesInOrderInnerLetsShadowAndNamesEndWithTheLet) {
    expectTexts({
        {"Let ( [ a = 1 ; b = a + 1 ] ; a & b )", "12"},
        {"Let ( a = 1 ; Let ( a = 2 ; a ) & a )", "21"},   // the outer a is back after the inner Let
        {"Let ( [ a = 1 ; a = a + 1 ] ; a )", "2"},         // rebinding sees the earlier value
        {"Let ( True = 5 ; True )", "5"},                   // a Let name hides a function's
    });
    // Let names are unknown outside their Let.
    constexpr auto Unknown = CalcError::Kind::UnknownName;
    expectFailures({
        {"Let ( a = 1 ; a ) + a", Unknown, 1, 21, "Unknown name a"},
        {"Let ( a = a ; 1 )", Unknown, 1, 11, "Unknown name a"},  // not even in its own value
    });
}

TEST_F(VariableTest, LocalVariablesOutliveTheirLetAndGlobalsTheirScope) {
    EXPECT_EQ(text("Let ( $x = 5 ; $x ) & $x"), "55");
    // The next evaluation with the same scope still sees it...
    EXPECT_EQ(text("$X + 1"), "6");
    // ...but another scope does not.
    Variables other;
    EXPECT_EQ(utf8Of(calc::evaluate(u"$x", context, other)), "");
    // $$ variables belong to the context, not to a scope.
    EXPECT_EQ(text("Let ( $$total = 10 ; $$total * 2 )"), "20");
    EXPECT_EQ(locals.size(), 1u);  // still only $x

    Variables otherScope;
    EXPECT_EQ(utf8Of(calc::evaluate(u"$$TOTAL", context, otherScope)), "10");
    // One and two dollar names are different variables.
    locals.set(u"$x", makeText(u"local"));
    context.globalVariables.set(u"$$x", makeText(u"global"));
    EXPECT_EQ(text("$x & \"/\" & $$x"), "local/global");
    EXPECT_EQ(text("Let ( [ $x = 1 ; $$x = 2 ] ; $x & $$x )"), "12");
    // Unset variables are empty text; names may have dots.
    FMX_Data value = eval("$never");
    EXPECT_EQ(value.type, FMX_TYPE_TEXT);
    EXPECT_TRUE(emptyOf(value));
    EXPECT_EQ(text("$never + 1"), "1");
    locals.set(u"$order.total", makeNumber(3));
    EXPECT_EQ(text("$order.total * 2"), "6");
}

TEST_F(VariableTest, VariablesKeepTheFirstSpellingAndMatchAnyCase) {
    Variables v;
    v.set(u"$Name", makeText(u"a"));
    v.set(u"$NAME", makeText(u"b"));
    ASSERT_EQ(v.size(), 1u);
    EXPECT_EQ(v.begin()->first, u"$Name");
    EXPECT_EQ(utf8Of(v.get(u"$name")), "b");
    EXPECT_TRUE(v.remove(u"$nAmE"));
    EXPECT_FALSE(v.remove(u"$name"));
    EXPECT_TRUE(v.empty());
}

TEST_F(VariableTest, OneParsedExpressionServesManyEvaluations) {
    auto expression = Expression::parse(u"Let ( [ a = $n * 2 ; $seen = $seen + 1 ] ; a & \"/\" & $seen )");
    Variables first, second;
    first.set(u"$n", makeNumber(1));
    second.set(u"$n", makeNumber(5));
    EXPECT_EQ(utf8Of(expression->evaluate(context, first)), "2/1");
    EXPECT_EQ(utf8Of(expression->evaluate(context, second)), "10/1");
    EXPECT_EQ(utf8Of(expression->evaluate(context, first)), "2/2");
}

class FieldTest : public CalcTest {
protected:
    void SetUp() override {
        context.setField("Orders", "Total", makeNumber(12.5));
        context.setField("Orders", "Customer", makeText(u"Ada"));
        context.setField("Orders", "Photo", container({{"JPEG", {1, 2, 3}}}, u"photo.jpg"));
    }
};

TEST_F(FieldTest, FieldsAndTheFilePathAreReadThroughTheContext) {
    EXPECT_EQ(text("Orders::Total * 2"), "25");
    EXPECT_EQ(text("\"Dear \" & Orders::Customer"), "Dear Ada");
    FMX_Data photo = eval("Orders::Photo");
    EXPECT_EQ(photo.type, FMX_TYPE_BINARY);
    EXPECT_EQ(photo.binary.streams.size(), 1u);
    // A missing field is an evaluation error.
    expectFailures({{"1 +\n  Orders::Missing", CalcError::Kind::Evaluation, 2, 3, "Field not found: Orders::Missing"}});
    // Only when it is evaluated.
    EXPECT_EQ(text("If ( 0 ; Orders::Missing ; \"fine\" )"), "fine");
    EXPECT_EQ(text("get ( filepath )"), "file:/data/Orders.vddb");
}

}  // namespace
}  // namespace vdhost::calc::testing
