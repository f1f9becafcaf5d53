// Our direct-colour pictures: what we write reads back the same through ImageMagick (the reader of
// every other picture) and through our own row decoder; what ImageMagick writes we read too; and a
// damaged or foreign picture is left to ImageMagick.
#include "platform/graphics/magick_codec.h"
#include "platform/graphics/pack_bits.h"
#include "platform/graphics/pict_codec.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <vector>

namespace vdtest {
namespace {

using namespace vd::platform;

// Runs, short repeats and noise, different in each component, so that packing meets every case.
Raster Pattern(int32_t width, int32_t height) {
    Raster r;
    r.width = width, r.height = height, r.bands = 3;
    std::mt19937 random(uint32_t(width * 31 + height));
    for (int32_t y = 0; y < height; ++y)
        for (int32_t x = 0; x < width; ++x) {
            const bool flat = (x / 7 + y) % 3 == 0;
            r.pixels.push_back(flat ? 200 : uint8_t(random()));
            r.pixels.push_back(uint8_t(x / 2));
            r.pixels.push_back(x % 5 < 2 ? 9 : uint8_t(random() % 4));
        }
    return r;
}

std::vector<uint8_t> Written(const Raster& r) {
    std::vector<uint8_t> file;
    PictWriter writer;
    EXPECT_EQ(writer.Begin(r.width, r.height, 72, 72, file), 0);
    EXPECT_EQ(writer.AddRows(r.pixels.data(), r.RowBytes(), r.height), 0);
    EXPECT_EQ(writer.Finish(), 0);
    return file;
}

std::vector<uint8_t> OurDecoding(const std::vector<uint8_t>& file) {
    PictLayout layout;
    if (!ReadPictLayout(file.data(), file.size(), layout)) return {};
    std::vector<uint8_t> pixels, planes(size_t(layout.width) * 3);
    for (int32_t y = 0; y < layout.height; ++y) {
        DecodePictRow(file.data(), layout, y, planes.data());
        for (int32_t x = 0; x < layout.width; ++x)
            for (int c = 0; c < 3; ++c) pixels.push_back(planes[size_t(c * layout.width + x)]);
    }
    return pixels;
}

TEST(PictCodec, WhatWeWriteReadsTheSameHereAndThroughImageMagick) {
    // One pixel (rows stored unpacked), one-byte counts up to 62 pixels, two-byte counts beyond.
    for (int32_t width : {1, 2, 62, 63, 300}) {
        SCOPED_TRACE(width);
        const Raster source = Pattern(width, 5);
        const std::vector<uint8_t> file = Written(source);
        EXPECT_EQ(OurDecoding(file), source.pixels);
        Raster magick;
        int32_t count = 0;
        ASSERT_EQ(MagickDecode(file.data(), file.size(), "PICT", 0, magick, count), 0);
        EXPECT_EQ(magick.width, width);
        EXPECT_EQ(magick.pixels, source.pixels);
    }
}

TEST(PictCodec, ImageMagicksPicturesAreOursToReadAndDamagedOnesAreNot) {
    const Raster source = Pattern(300, 4);
    std::vector<uint8_t> theirs;
    ASSERT_EQ(MagickEncode(source, "PICT", false, theirs), 0);
    EXPECT_EQ(OurDecoding(theirs), source.pixels);

    const std::vector<uint8_t> ours = Written(source);
    PictLayout layout;
    std::vector<uint8_t> cut(ours.begin(), ours.end() - 3);
    EXPECT_FALSE(ReadPictLayout(cut.data(), cut.size(), layout));
    std::vector<uint8_t> miscounted = ours;
    ASSERT_TRUE(ReadPictLayout(ours.data(), ours.size(), layout));
    miscounted[layout.rows[1].offset - 1] -= 1;  // the second row's count one short
    EXPECT_FALSE(ReadPictLayout(miscounted.data(), miscounted.size(), layout));
    std::vector<uint8_t> drawn = ours;
    drawn[drawn.size() - 1] = 0x98;  // another pixmap where the end should be
    EXPECT_FALSE(ReadPictLayout(drawn.data(), drawn.size(), layout));
}

TEST(PackBits, StaysWithinItsBoundAndChecksLengthsExactly) {
    std::vector<uint8_t> worst;
    for (int i = 0; i < 1000; ++i) worst.push_back(uint8_t(i % 3 == 2 ? worst.back() : i));  // pairs never pack
    std::vector<uint8_t> packed(PackBitsBound(worst.size())), back(worst.size());
    const size_t length = PackBits(worst.data(), worst.size(), packed.data());
    EXPECT_LE(length, PackBitsBound(worst.size()));
    EXPECT_EQ(UnpackBits(packed.data(), length, back.data(), back.size()), length);
    EXPECT_EQ(back, worst);
    EXPECT_TRUE(UnpacksTo(packed.data(), length, worst.size()));
    EXPECT_FALSE(UnpacksTo(packed.data(), length, worst.size() + 1));
    EXPECT_FALSE(UnpacksTo(packed.data(), length - 1, worst.size()));
}

}  // namespace
}  // namespace vdtest
