// JPEG encoding and decoding through libvips: what they refuse. (Round trips of real pictures are
// the waveform function's tests.)
#include "platform/graphics/jpeg_codec.h"

#include <gtest/gtest.h>

#include <string>

namespace vdtest {
namespace {

using namespace vd::platform;

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
