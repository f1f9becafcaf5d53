// ImageMagick and libcurl are loaded by the first picture that needs them; without them, or without
// the picture libraries at start-up, the functions say so. Each case is a vdhost run of its own:
// a process loads a library once.
#include "image_test_support.h"

#include <support/process.h>

namespace vdtest {
namespace {

class ImageLibrariesTest : public ImageSessionTest {
protected:
    ProcessResult Run(const std::string& calculation, const std::map<std::string, std::string>& environment) {
        return runProcess({VDHOST_EXE, "--plugins", VD_PLUGIN_DIR, "--db", Path("t.vddb"), "eval", calculation},
                          environment);
    }
};

TEST_F(ImageLibrariesTest, LoadedOnFirstUseAndMissedClearly) {
    const FMX_Data png = Convert(ContainerWith("BMPf", BmpOf(MakePicture(8, 8, [](int x, int) { return Rgb{uint8_t(x), 0, 0}; }))),
                                 "PNGf");
    const std::string file = Write("p.png", StreamOf(png, "PNGf"));
    const std::string toJpeg = "Vandrel_ConvertImage ( \"" + file + "\" ; \"JPEG\" )";
    const std::string toPict = "Vandrel_ConvertImage ( \"" + file + "\" ; \"PICT\" )";

    // (libvips's own format modules bring both libraries in once it starts; a run without pictures
    // has neither.)
    ProcessResult r = Run("Vandrel_Version ( \"long\" )", {{"LD_DEBUG", "files"}});
    EXPECT_EQ(r.err.find("file=libMagickCore"), std::string::npos);
    EXPECT_EQ(r.err.find("file=libcurl"), std::string::npos);
    EXPECT_EQ(Run(toPict, {}).out.substr(0, 5), "PICT ");  // a container prints its streams and sizes

    EXPECT_EQ(Run(toJpeg, {{"VANDREL_JPEG_EXPORT", "absent"}}).out,
              "$20403:Vandrel_ConvertImage: QuickTime required components are not installed\n");
    EXPECT_EQ(Run(toPict, {{"VANDREL_MAGICK_LAYER", "unloadable"}}).out,
              "$-2005:Vandrel_ConvertImage: Could not find QT exporter for specified image type\n");
    EXPECT_EQ(Run("Vandrel_ListImageOutputTypes", {{"VANDREL_MAGICK_LAYER", "unloadable"}}).out.find("PICT"),
              std::string::npos);
    EXPECT_EQ(Run("Vandrel_ConvertImage ( \"http://127.0.0.1:9/p.png\" ; \"JPEG\" )", {{"VANDREL_WEB_LAYER", "unloadable"}}).out,
              "$-2005:Vandrel_ConvertImage: Could not find referenced image file\n");
}

}  // namespace
}  // namespace vdtest
