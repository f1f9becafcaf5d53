// Plain PNG files deflated on several threads: the bands join into one valid zlib stream (its
// checksum and every back reference across a band's edge included), whatever the band count.
#include "platform/graphics/graphics_importer.h"
#include "platform/graphics/image_formats.h"
#include "platform/graphics/pict_codec.h"

#include <gtest/gtest.h>
#include <zlib.h>

#include <random>
#include <string>
#include <vector>

namespace vdtest {
namespace {

using namespace vd::platform;

uint32_t Word(const uint8_t* p) { return uint32_t(p[0]) << 24 | uint32_t(p[1]) << 16 | uint32_t(p[2]) << 8 | p[3]; }

// The rows of a PNG file written with no filter, read with zlib alone; the chunks' CRCs checked.
std::vector<uint8_t> Inflated(const std::vector<uint8_t>& file, std::string& chunks) {
    std::vector<uint8_t> stream;
    for (size_t at = 8; at + 12 <= file.size();) {
        const uint32_t length = Word(&file[at]);
        const std::string type(file.begin() + std::ptrdiff_t(at + 4), file.begin() + std::ptrdiff_t(at + 8));
        EXPECT_EQ(uint32_t(crc32(0, &file[at + 4], length + 4)), Word(&file[at + 8 + length])) << type;
        if (type == "IDAT") stream.insert(stream.end(), &file[at + 8], &file[at + 8 + length]);
        else chunks += type + " ";
        at += 12 + length;
    }
    std::vector<uint8_t> rows(64 << 20);
    uLongf size = rows.size();
    EXPECT_EQ(uncompress(rows.data(), &size, stream.data(), uLong(stream.size())), Z_OK);
    rows.resize(size);
    return rows;
}

TEST(PngWriter, BandsJoinIntoOneStreamThatInflatesToTheRows) {
    // Noise with repeats, so that deflate reaches back across the bands' edges: 3 MB of RGB rows
    // make several bands, and the grey of a small picture one.
    for (const auto& [width, height, grey] : {std::tuple{1000, 1000, false}, {333, 77, true}}) {
        SCOPED_TRACE(width);
        std::mt19937 random{uint32_t(width)};
        std::vector<uint8_t> pixels(size_t(width) * height * 3);
        for (size_t i = 0; i < pixels.size(); ++i) pixels[i] = i % 4096 < 2048 ? uint8_t(random()) : pixels[i - 2048];
        if (grey)
            for (size_t i = 0; i < pixels.size(); i += 3) pixels[i + 1] = pixels[i + 2] = pixels[i];
        std::vector<uint8_t> pict;
        PictWriter writer;
        ASSERT_EQ(writer.Begin(width, height, 72, 72, pict), 0);
        ASSERT_EQ(writer.AddRows(pixels.data(), size_t(width) * 3, height), 0);
        ASSERT_EQ(writer.Finish(), 0);
        GraphicsImporter importer;
        ASSERT_EQ(importer.OpenBytes(pict, ImageCode("PICT")), 0);
        ImageExportSettings settings;
        if (grey) settings.depth = 40;
        std::vector<uint8_t> file;
        ASSERT_EQ(importer.Export(*FindImageExporter(ImageCode("PNGf")), settings, file), 0);

        std::string chunks;
        const std::vector<uint8_t> rows = Inflated(file, chunks);
        EXPECT_EQ(chunks, "IHDR pHYs IEND ");
        const size_t bands = grey ? 1 : 3, rowBytes = size_t(width) * bands;
        ASSERT_EQ(rows.size(), size_t(height) * (1 + rowBytes));
        for (int y = 0; y < height; ++y) {
            const uint8_t* row = &rows[size_t(y) * (1 + rowBytes)];
            ASSERT_EQ(row[0], 0) << "row " << y;
            for (size_t x = 0; x < size_t(width); ++x)
                ASSERT_EQ(row[1 + x * bands], pixels[(size_t(y) * width + x) * 3]) << "row " << y << ", pixel " << x;
        }
    }
}

}  // namespace
}  // namespace vdtest
