// Drawing a picture through a matrix in the graphics layer: how large the drawing is, and that the
// affine and the perspective routes put the same pixels in the same places.
#include "platform/graphics/draw_matrix.h"
#include "platform/graphics/graphics_importer.h"
#include "platform/graphics/image_formats.h"

#include "plugin/image/image_test_support.h"

#include <gtest/gtest.h>

#include <cmath>

namespace vdtest {
namespace {

using vd::platform::ClipRect;
using vd::platform::DrawMatrix;
using vd::platform::MappedBounds;

DrawMatrix Turned(double degrees, double scale) {
    const double r = degrees * M_PI / 180, c = std::cos(r) * scale, s = std::sin(r) * scale;
    DrawMatrix m;
    m.m[0][0] = c, m.m[0][1] = s, m.m[1][0] = -s, m.m[1][1] = c;
    return m;
}

std::string Bounds(const ClipRect& source, const DrawMatrix& m) {
    ClipRect b;
    if (int status = MappedBounds(source, m, b)) return std::to_string(status);
    return std::to_string(b.left) + "," + std::to_string(b.top) + "," + std::to_string(b.right) + "," +
           std::to_string(b.bottom);
}

TEST(MatrixDrawing, TheDrawingIsAsLargeAsTheMappedRectangle) {
    EXPECT_EQ(Bounds({0, 0, 4, 3}, Turned(90, 1)), "-3,0,0,4");
    EXPECT_EQ(Bounds({0, 0, 101, 10}, Turned(0, 0.5)), "0,0,51,5");  // a part-covered column counts
    EXPECT_EQ(Bounds({2, 1, 5, 3}, DrawMatrix{}), "2,1,5,3");
    DrawMatrix horizon;
    horizon.m[0][2] = -0.1;  // w reaches 0 at x = 10
    EXPECT_EQ(Bounds({0, 0, 20, 20}, horizon), "-50");
    EXPECT_EQ(Bounds({0, 0, 20, 20}, Turned(0, 0)), "-50");
    EXPECT_EQ(Bounds({0, 0, 20, 20}, Turned(10, 40000)), "-108");
    EXPECT_EQ(Bounds({5, 0, 5, 20}, DrawMatrix{}), "-50");
}

TEST(MatrixDrawing, AffineAndPerspectiveRoutesAgree) {
    const Picture source = MakePicture(40, 30, [](int x, int y) { return Rgb{uint8_t(6 * x), uint8_t(8 * y), uint8_t(x * y)}; });
    const std::string bmp = BmpOf(source);
    const vd::platform::ImageFormat* format = vd::platform::FindImageExporter(vdhost::fourCharCode("BMPf"));
    ASSERT_TRUE(format);
    const auto draw = [&](const DrawMatrix& m, const ClipRect* part) {
        vd::platform::GraphicsImporter importer;
        EXPECT_EQ(importer.OpenBytes(std::vector<uint8_t>(bmp.begin(), bmp.end()), vdhost::fourCharCode("BMPf")), 0);
        if (part) importer.SetSourceRect(*part);
        importer.SetMatrix(m);
        std::vector<uint8_t> out;
        EXPECT_EQ(importer.Export(*format, {}, out), 0);
        return PictureOfBmp(std::string(out.begin(), out.end()));
    };
    DrawMatrix affine = Turned(30, 0.7);
    affine.m[2][0] = 12.25, affine.m[2][1] = -3.5;
    DrawMatrix perspective = affine;
    perspective.m[0][2] = 1e-12;  // too small to move a pixel, enough to take the other route
    const ClipRect part{3, 2, 37, 25};
    for (const ClipRect* p : {static_cast<const ClipRect*>(nullptr), &part}) {
        const std::optional<Picture> a = draw(affine, p), b = draw(perspective, p);
        ASSERT_TRUE(a && b);
        EXPECT_EQ(a->width, b->width);
        EXPECT_EQ(a->height, b->height);
        EXPECT_GT(Psnr(*a, *b), 45.0);
    }
}

}  // namespace
}  // namespace vdtest
