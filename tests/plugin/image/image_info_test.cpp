// Vandrel_GetImageInfo's report of pictures in several formats, embedded and by reference.
#include "image_test_support.h"

namespace vdtest {
namespace {

// An uncompressed 8-bit grey TIFF with one page per entry of pages (each width x height, filled
// with its shade): libvips writes no multi-page file from one picture, so the test makes its own.
std::string GreyTiff(int width, int height, const std::vector<uint8_t>& pages) {
    std::string s = "II*";
    s += '\0';
    PutLe(s, 8, 4);
    const uint32_t pixels = uint32_t(width * height);
    for (size_t page = 0; page < pages.size(); ++page) {
        const uint32_t ifd = uint32_t(s.size()), data = ifd + 2 + 9 * 12 + 4;
        const uint32_t next = page + 1 < pages.size() ? data + pixels : 0;
        const auto entry = [&](uint16_t tag, uint16_t type, uint32_t value) {
            PutLe(s, tag, 2), PutLe(s, type, 2), PutLe(s, 1, 4), PutLe(s, value, 4);
        };
        PutLe(s, 9, 2);
        entry(256, 3, uint32_t(width));
        entry(257, 3, uint32_t(height));
        entry(258, 3, 8);
        entry(259, 3, 1);  // no compression
        entry(262, 3, 1);  // black is zero
        entry(273, 4, data);
        entry(277, 3, 1);
        entry(278, 3, uint32_t(height));
        entry(279, 4, pixels);
        PutLe(s, next, 4);
        s.append(pixels, char(pages[page]));
    }
    return s;
}

class ImageInfoTest : public ImageSessionTest {
protected:
    std::string Info(const FMX_Data& picture) { return Text(u"Vandrel_GetImageInfo ( $a )", {picture}); }
    // The converted picture with the resolution given (the 11-argument form keeps it for later calls).
    FMX_Data ConvertAt(const Picture& p, const char* type, int hDpi, int vDpi) {
        return Eval(u"Vandrel_ConvertImage ( $a ; $b ; 24 ; " + vdhost::utf8ToUtf16(std::to_string(hDpi)) + u" ; " +
                        vdhost::utf8ToUtf16(std::to_string(vDpi)) + u" ; -1 ; 900 ; -1 ; -1 ; -1 ; -1 )",
                    {ContainerWith("BMPf", BmpOf(p)), vdhost::makeTextUtf8(type)});
    }
};

std::string Report(int height, int width, int depth, int vDpi, int hDpi, int count, size_t size, const char* type,
                   const char* name) {
    return "Height (px): " + std::to_string(height) + "\rWidth (px): " + std::to_string(width) +
           "\rDepth (bits): " + std::to_string(depth) + "\rQuality: 0\rV Resolution (dpi): " + std::to_string(vDpi) +
           "\rH Resolution (dpi): " + std::to_string(hDpi) + "\rImage Count: " + std::to_string(count) +
           "\rSize (bytes): " + std::to_string(size) + "\rCompressor Type: " + type +
           "\rCompressor Description: " + name + "\r";
}

TEST_F(ImageInfoTest, ReportsHeightBeforeWidthAndVerticalResolutionFirst) {
    const Picture photo = MakePicture(640, 480, [](int x, int y) { return Rgb{uint8_t(x), uint8_t(y), 60}; });
    const FMX_Data jpeg = ConvertAt(photo, "JPEG", 72, 72);
    EXPECT_EQ(Info(jpeg), Report(480, 640, 24, 72, 72, 1, StreamOf(jpeg, "JPEG").size(), "JPEG", "JPEG Image"));

    const Picture small = MakePicture(30, 20, [](int x, int y) { return Rgb{uint8_t(8 * x), uint8_t(8 * y), 0}; });
    const FMX_Data png = ConvertAt(small, "PNGf", 300, 150);
    EXPECT_EQ(Info(png), Report(20, 30, 24, 150, 300, 1, StreamOf(png, "PNGf").size(), "PNGf", "PNG Image"));

    const FMX_Data gif = Convert(ContainerWith("BMPf", BmpOf(small)), "GIFf");
    const std::string gifInfo = Info(gif);
    EXPECT_EQ(gifInfo.substr(0, gifInfo.find("\rDepth")), "Height (px): 20\rWidth (px): 30");
    EXPECT_NE(gifInfo.find("\rImage Count: 1\rSize (bytes): " + std::to_string(StreamOf(gif, "GIFf").size()) +
                           "\rCompressor Type: GIFf\rCompressor Description: GIF Image\r"),
              std::string::npos)
        << gifInfo;
}

TEST_F(ImageInfoTest, CountsThePagesOfAFileByReference) {
    const std::string tiff = GreyTiff(8, 6, {40, 200});
    const std::string path = Write("pages.tif", tiff);
    EXPECT_EQ(Text(u"Vandrel_GetImageInfo ( $a )", {vdhost::makeTextUtf8(path)}),
              Report(6, 8, 8, 72, 72, 2, tiff.size(), "TIFF", "TIFF Image"));
}

TEST_F(ImageInfoTest, FailuresSayWhatWentWrong) {
    EXPECT_EQ(Text(u"Vandrel_GetImageInfo ( \"no such picture.jpg\" )"),
              "$-43:Vandrel_GetImageInfo: Could not find referenced image file");
    EXPECT_EQ(Info(ContainerWith("JPEG", "not a picture")),
              "$-2003:Vandrel_GetImageInfo: Could not find QT importer for this type.");
}

}  // namespace
}  // namespace vdtest
