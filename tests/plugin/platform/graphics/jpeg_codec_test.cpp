// JPEG encoding of drawn pictures and decoding of picture bytes, through libvips.
#include "platform/graphics/jpeg_codec.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

namespace vdtest {
namespace {

using vd::platform::DecodedImage;
using vd::platform::DecodeImage;
using vd::platform::EncodeJpeg;
using vd::platform::PixelBuffer;
using vd::platform::Rgba;

bool Near(const uint8_t* rgb, Rgba want) {
    const int tolerance = 12;  // JPEG keeps flat colours to within a few steps
    return std::abs(rgb[0] - want.r) <= tolerance && std::abs(rgb[1] - want.g) <= tolerance &&
           std::abs(rgb[2] - want.b) <= tolerance;
}

TEST(JpegCodec, EncodesTheTopLeftRegionAndDecodesItBack) {
    auto picture = PixelBuffer::Make(100, 50);
    ASSERT_TRUE(picture);
    picture->SetColor({200, 30, 30, 255});
    picture->FillRect(0, 0, 50, 50);
    picture->SetColor({20, 40, 220, 255});
    picture->FillRect(50, 0, 100, 50);

    std::vector<uint8_t> jpeg;
    ASSERT_EQ(EncodeJpeg(*picture, 99, 49, vd::platform::kJpegBestQuality, jpeg), 0);
    ASSERT_GT(jpeg.size(), 4u);
    EXPECT_EQ(jpeg[0], 0xFF);
    EXPECT_EQ(jpeg[1], 0xD8);

    DecodedImage image;
    ASSERT_EQ(DecodeImage(jpeg.data(), jpeg.size(), image), 0);
    EXPECT_EQ(image.width, 99);
    EXPECT_EQ(image.height, 49);
    EXPECT_TRUE(Near(image.At(20, 20), {200, 30, 30, 255}));
    EXPECT_TRUE(Near(image.At(80, 30), {20, 40, 220, 255}));
}

TEST(JpegCodec, RefusesEmptyOrOversizedRegionsAndUnreadableBytes) {
    auto picture = PixelBuffer::Make(10, 10);
    std::vector<uint8_t> jpeg;
    EXPECT_EQ(EncodeJpeg(*picture, 0, 10, 100, jpeg), -50);
    EXPECT_EQ(EncodeJpeg(*picture, 10, 11, 100, jpeg), -50);
    EXPECT_TRUE(jpeg.empty());

    DecodedImage image;
    const std::string junk = "this is no picture at all";
    EXPECT_EQ(DecodeImage(junk.data(), junk.size(), image), -2001);
    EXPECT_EQ(DecodeImage(nullptr, 0, image), -2001);
}

TEST(PixelBufferArea, LargePicturesAreRefusedBeforeAllocation) {
    EXPECT_FALSE(PixelBuffer::Make(PixelBuffer::kMaxSide, PixelBuffer::kMaxSide));
    EXPECT_FALSE(PixelBuffer::Make(8192, 8193));  // within the side limit, beyond the area limit
}

}  // namespace
}  // namespace vdtest
