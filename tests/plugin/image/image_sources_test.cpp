// Where pictures come from: web addresses served here on the loopback interface, and the plug-in's
// own VD image.
#include "image_test_support.h"
#include "loopback_server.h"

#include "image/vd_image.h"
#include "platform/graphics/graphics_importer.h"

#include <chrono>

namespace vdtest {
namespace {

class ImageSourcesTest : public ImageSessionTest {};

TEST_F(ImageSourcesTest, WebImagesAreFetchedWithinTheirLimits) {
    ScopedEnv timeout("VANDREL_WEB_TIMEOUT", "1");
    ScopedEnv cap("VANDREL_WEB_MAX_BYTES", "100000");
    const Picture source = MakePicture(40, 30, [](int x, int y) { return Rgb{uint8_t(x * 6), uint8_t(y * 8), 90}; });
    LoopbackServer server(BmpOf(source));

    const FMX_Data fetched = Convert(vdhost::makeTextUtf8("  " + server.Url("/picture") + " "), "PNGf");
    ASSERT_EQ(StreamTypes(fetched), "PNGf|SIZE|JPEG");
    const std::optional<Picture> back = PixelsOf(fetched);
    ASSERT_TRUE(back);
    EXPECT_TRUE(back->pixels == source.pixels);

    EXPECT_EQ(vdhost::utf8Of(Convert(vdhost::makeTextUtf8(server.Url("/missing.png")), "PNGf")),
              "$-43:Vandrel_ConvertImage: Could not find referenced image file");
    EXPECT_EQ(vdhost::utf8Of(Convert(vdhost::makeTextUtf8(server.Url("/huge")), "PNGf")),
              "$-108:Vandrel_ConvertImage: Could not find referenced image file");
    const auto start = Clock::now();
    EXPECT_EQ(vdhost::utf8Of(Convert(vdhost::makeTextUtf8(server.Url("/stall")), "PNGf")),
              "$-36:Vandrel_ConvertImage: Could not find referenced image file");
    EXPECT_LT(Clock::now() - start, std::chrono::seconds(4));
}

TEST_F(ImageSourcesTest, AVdImageIsALosslessPictWithoutItsFileHeader) {
    const Picture source = MakePicture(33, 21, [](int x, int y) { return Rgb{uint8_t(x * 7), uint8_t(255 - y), uint8_t(x ^ y)}; });
    const FMX_Data applied = Eval(u"Let ( c = Vandrel_TClear ; Vandrel_TApply ( $a ) )", {ContainerWith("BMPf", BmpOf(source))});
    ASSERT_EQ(StreamTypes(applied), "VDIM|SIZE|JPEG");
    const std::string bytes = StreamOf(applied, "VDIM");
    EXPECT_EQ(bytes.substr(0, 4), "PICT");
    EXPECT_EQ(bytes.substr(4 + 6, 4), std::string("\x00\x15\x00\x21", 4));  // the picture's frame: 21 high, 33 wide

    const std::optional<Picture> back = PixelsOf(ContainerWith("VDIM", bytes));
    ASSERT_TRUE(back) << StreamTypes(Convert(ContainerWith("VDIM", bytes), "BMPf", 24, -1));
    EXPECT_TRUE(back->pixels == source.pixels);
}

}  // namespace
}  // namespace vdtest
