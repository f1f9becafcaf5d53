// The offscreen picture the drawing functions paint into.
#include "platform/graphics/pixel_buffer.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>

namespace vd::platform {
namespace {

constexpr Rgba kWhite{255, 255, 255, 255};
constexpr Rgba kInk{10, 20, 30, 255};

// The picture as rows of '#' (ink) and '.' (anything else), for readable expectations.
std::string Picture(const PixelBuffer& p) {
    std::string rows;
    for (int32_t y = 0; y < p.Height(); ++y) {
        for (int32_t x = 0; x < p.Width(); ++x) rows += p.PixelAt(x, y) == kInk ? '#' : '.';
        rows += '\n';
    }
    return rows;
}

TEST(PixelBuffer, SizesAreCheckedBeforeAnythingIsAllocated) {
    auto one = PixelBuffer::Make(1, 1);
    ASSERT_TRUE(one);
    EXPECT_EQ(one->RowBytes(), 4u);
    EXPECT_EQ(one->PixelAt(0, 0), kWhite);
    EXPECT_EQ(one->PixelAt(1, 0), (Rgba{0, 0, 0, 0}));

    const int32_t bad[][2] = {{1, 0}, {-5, 5}, {1, std::numeric_limits<int32_t>::max()}};
    for (const auto& size : bad) EXPECT_FALSE(PixelBuffer::Make(size[0], size[1])) << size[0] << "x" << size[1];
}

TEST(PixelBuffer, FillRectIsHalfOpenAndClipped) {
    auto p = PixelBuffer::Make(5, 3);
    ASSERT_TRUE(p);
    p->SetColor(kInk);
    p->FillRect(1, 1, 3, 2);
    EXPECT_EQ(Picture(*p), ".....\n.##..\n.....\n");
    p->FillRect(3, -10, 100, 1);
    EXPECT_EQ(Picture(*p), "...##\n.##..\n.....\n");
    p->FillRect(4, 2, 2, 3);  // right before left: nothing
    EXPECT_EQ(Picture(*p), "...##\n.##..\n.....\n");
    const uint8_t* row1 = p->Pixels() + p->RowBytes();
    EXPECT_EQ(row1[4], 10);  // RGBA order, x = 1
    EXPECT_EQ(row1[7], 255);
}

TEST(PixelBuffer, LinesIncludeBothEndsAndMoveThePen) {
    auto p = PixelBuffer::Make(5, 5);
    ASSERT_TRUE(p);
    p->SetColor(kInk);
    p->MoveTo(0, 0);
    p->LineTo(4, 4);
    p->LineTo(4, 0);
    EXPECT_EQ(Picture(*p),
              "#...#\n"
              ".#..#\n"
              "..#.#\n"
              "...##\n"
              "....#\n");
    p->MoveTo(2, 0);
    p->LineTo(2, 0);  // a point
    EXPECT_EQ(p->PixelAt(2, 0), kInk);
}

TEST(PixelBuffer, FarAwayLinesAreClippedNotWalked) {
    auto p = PixelBuffer::Make(4, 3);
    ASSERT_TRUE(p);
    p->SetColor(kInk);
    const int32_t far = std::numeric_limits<int32_t>::max(), near = std::numeric_limits<int32_t>::min();
    p->MoveTo(near, 1);
    p->LineTo(far, 1);  // returns at once, draws the visible row
    EXPECT_EQ(Picture(*p), "....\n####\n....\n");
    p->MoveTo(near, near);
    p->LineTo(near, far);  // entirely outside
    p->MoveTo(10, 10);
    p->LineTo(20, 20);
    EXPECT_EQ(Picture(*p), "....\n####\n....\n");
}

}  // namespace
}  // namespace vd::platform
