// The transform state's arithmetic against values worked out by hand: fixed-point conversions,
// the matrix calls and their order, the quad mapping, the resize of an empty picture.
#include "image/transform/transform_state.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

namespace vd::image {
namespace {

constexpr Fixed F(int whole) { return whole * kFixedOne; }

MatrixRecord Identity() {
    MatrixRecord m;
    SetIdentityMatrix(m);
    return m;
}

// (x, y) through the matrix, with the division by w.
std::pair<double, double> Map(const MatrixRecord& m, double x, double y) {
    const DoubleMatrix d = ToDoubles(m);
    const double w = x * d[0][2] + y * d[1][2] + d[2][2];
    return {(x * d[0][0] + y * d[1][0] + d[2][0]) / w, (x * d[0][1] + y * d[1][1] + d[2][1]) / w};
}

TEST(TransformArithmetic, FixedPointConversionsRoundAndSaturate) {
    EXPECT_EQ(X2Fix(1.5), 0x18000);
    EXPECT_EQ(X2Fix(-0.25), -0x4000);
    EXPECT_EQ(X2Fix(40000.0), std::numeric_limits<int32_t>::max());
    EXPECT_EQ(X2Fix(-40000.0), std::numeric_limits<int32_t>::min());
    EXPECT_EQ(X2Frac(-0.005), -5368709);
    EXPECT_EQ(Fix2Long(0x18000), 2);
    EXPECT_EQ(Fix2Long(0x17FFF), 1);
    EXPECT_EQ(Fix2Long(-0x18000), -2);
    // The resize factor is truncated, not rounded: 2/3 is 43690.67 / 65536.
    EXPECT_EQ(TruncatedFactor(2.0f / 3.0f), 43690);
    EXPECT_EQ(TruncatedFactor(32768.0f), std::numeric_limits<int32_t>::max());
    EXPECT_EQ(TruncatedFactor(-40000.0f), std::numeric_limits<int32_t>::min());
}

TEST(TransformArithmetic, CallsAppendInOrder) {
    // Scale by (2, 3), then a quarter turn: (1, 1) goes to (2, 3), then to (-3, 2).
    MatrixRecord m = Identity();
    ScaleMatrix(m, F(2), F(3), 0, 0);
    RotateMatrix(m, F(90), 0, 0);
    const Fixed expected[3][3] = {{0, F(2), 0}, {-F(3), 0, 0}, {0, 0, kFractOne}};
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j) EXPECT_EQ(m.matrix[i][j], expected[i][j]) << i << "," << j;
    EXPECT_EQ(Map(m, 1, 1), std::make_pair(-3.0, 2.0));

    // The other order turns first: (1, 1) to (-1, 1), then to (-2, 3).
    MatrixRecord turnedFirst = Identity();
    RotateMatrix(turnedFirst, F(90), 0, 0);
    ScaleMatrix(turnedFirst, F(2), F(3), 0, 0);
    EXPECT_EQ(Map(turnedFirst, 1, 1), std::make_pair(-2.0, 3.0));

    // Skew: x' = x + 0.5·y.
    MatrixRecord skew = Identity();
    SkewMatrix(skew, X2Fix(0.5), 0, 0, 0);
    EXPECT_EQ(skew.matrix[1][0], 0x8000);
    EXPECT_EQ(Map(skew, 0, 2), std::make_pair(1.0, 2.0));

    // About a point other than the origin, that point stays put.
    MatrixRecord about = Identity();
    ScaleMatrix(about, F(2), F(2), F(10), F(10));
    EXPECT_EQ(about.matrix[2][0], -F(10));
    EXPECT_EQ(Map(about, 10, 10), std::make_pair(10.0, 10.0));
}

TEST(TransformArithmetic, ConcatenationActsFirstOperandFirst) {
    MatrixRecord moveRight = Identity();
    moveRight.matrix[2][0] = F(10);
    MatrixRecord twice = Identity();
    ScaleMatrix(twice, F(2), F(2), 0, 0);
    ConcatMatrix(moveRight, twice);  // move, then double
    EXPECT_EQ(twice.matrix[2][0], F(20));

    MatrixRecord doubled = Identity();
    ScaleMatrix(doubled, F(2), F(2), 0, 0);
    MatrixRecord moved = moveRight;
    ConcatMatrix(doubled, moved);  // double, then move
    EXPECT_EQ(moved.matrix[2][0], F(10));
}

TEST(TransformArithmetic, QuadMapsASquareOntoATrapezoid) {
    // The square 0..100 onto a trapezoid whose top edge is half as wide: worked by hand,
    // x' = (0.5x − 0.25y + 25) / w, y' = 0.5y / w, w = 1 − 0.005y.
    const FixedQuad square{{{0, 0}, {F(100), 0}, {F(100), F(100)}, {0, F(100)}}};
    const FixedQuad trapezoid{{{F(25), 0}, {F(75), 0}, {F(100), F(100)}, {0, F(100)}}};
    MatrixRecord m = Identity();
    ASSERT_TRUE(QuadToQuadMatrix(square, trapezoid, m));
    const Fixed expected[3][3] = {{0x8000, 0, 0}, {-0x4000, 0x8000, -5368709}, {F(25), 0, kFractOne}};
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j) EXPECT_NEAR(m.matrix[i][j], expected[i][j], 1) << i << "," << j;
    const auto [x, y] = Map(m, 50, 50);
    EXPECT_NEAR(x, 50.0, 1e-3);
    EXPECT_NEAR(y, 100.0 / 3.0, 1e-3);

    const FixedQuad line{{{0, 0}, {F(50), 0}, {F(100), 0}, {F(30), 0}}};
    MatrixRecord kept = Identity();
    EXPECT_FALSE(QuadToQuadMatrix(square, line, kept));
    EXPECT_TRUE(IsIdentityMatrix(kept));
}

TEST(TransformArithmetic, QuadForgetsEarlierCallsAndActsAfterLaterOnes) {
    TransformState state;
    ScaleMatrix(state.matrix, F(2), F(2), 0, 0);
    state.crop.left = 0;
    StoreQuad(state, {100, 25, 0, 75, 0, 100, 100, 0, 100});  // in percent of the picture
    EXPECT_TRUE(IsIdentityMatrix(state.matrix));
    EXPECT_FALSE(state.crop.Active());
    EXPECT_TRUE(state.quadPending);

    // A scale after the quad acts before it: (100, 0) doubles to (200, 0), which the trapezoid's
    // mapping (a 100 x 100 picture, w = 1 on the top edge) takes to (125, 0).
    ScaleMatrix(state.matrix, F(2), F(2), 0, 0);
    ASSERT_TRUE(FoldQuad(state, 100, 100));
    EXPECT_FALSE(state.quadPending);
    const auto [x, y] = Map(state.matrix, 100, 0);
    EXPECT_NEAR(x, 125.0, 1e-3);
    EXPECT_NEAR(y, 0.0, 1e-3);

    TransformState degenerate;
    StoreQuad(degenerate, {100, 0, 0, 0, 0, 0, 0, 0, 0});
    EXPECT_FALSE(FoldQuad(degenerate, 100, 100));
    EXPECT_TRUE(degenerate.quadPending);
}

// The factors of given sizes are pinned through Vandrel_TResize; here what no picture can reach.
TEST(TransformArithmetic, AResizeOfAPictureWithoutWidthHasNoFactors) {
    Rect16 resize;
    resize.left = 0, resize.top = 0, resize.right = 300, resize.bottom = 0;
    const ResizeFactors f = FactorsForResize(resize, 0, 50);
    EXPECT_EQ(std::make_pair(f.x, f.y), std::make_pair(0, 0));

    Rect16 crop;
    EXPECT_FALSE(crop.Active());
    crop.left = 0;
    EXPECT_TRUE(crop.Active());
}

}  // namespace
}  // namespace vd::image
