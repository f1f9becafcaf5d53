// Field references and Get ( FilePath ).
#include "calc_test_support.h"

#include "api/values.h"

namespace vdhost::calc::testing {
namespace {

class FieldTest : public CalcTest {
protected:
    void SetUp() override {
        context.setField("Orders", "Total", makeNumber(12.5));
        context.setField("Orders", "Customer", makeText(u"Ada"));
        context.setField("Orders", "Not", makeText(u"keyword-named"));
        context.setField("Orders", "Photo", container({{"JPEG", {1, 2, 3}}}, u"photo.jpg"));
    }
};

TEST_F(FieldTest, FieldsAreReadThroughTheContext) {
    EXPECT_EQ(text("Orders::Total * 2"), "25");
    EXPECT_EQ(text("\"Dear \" & Orders::Customer"), "Dear Ada");
    EXPECT_EQ(text("Orders::Not"), "keyword-named");
    FMX_Data photo = eval("Orders::Photo");
    EXPECT_EQ(photo.type, FMX_TYPE_BINARY);
    EXPECT_EQ(photo.binary.streams.size(), 1u);
    EXPECT_EQ(text("Orders :: Customer"), "Ada");
}

TEST_F(FieldTest, AMissingFieldIsAnEvaluationError) {
    CalcError e = failure("1 +\n  Orders::Missing");
    EXPECT_EQ(e.kind, CalcError::Kind::Evaluation);
    EXPECT_EQ(e.message, "Field not found: Orders::Missing");
    EXPECT_EQ(e.line, 2);
    EXPECT_EQ(e.column, 3);
    // Only when it is evaluated.
    EXPECT_EQ(text("If ( 0 ; Orders::Missing ; \"fine\" )"), "fine");
}

TEST_F(FieldTest, GetFilePath) {
    EXPECT_EQ(text("Get ( FilePath )"), "file:/data/Orders.vddb");
    EXPECT_EQ(text("get(filepath)"), "file:/data/Orders.vddb");

    CalcError e = failure("Get ( CurrentDate )");
    EXPECT_EQ(e.kind, CalcError::Kind::UnknownName);
    EXPECT_EQ(e.message, "Unknown Get attribute CurrentDate");
    EXPECT_EQ(e.column, 7);
}

}  // namespace
}  // namespace vdhost::calc::testing
