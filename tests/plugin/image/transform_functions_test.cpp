// The transform functions through the host: the state they build up, and the pictures
// Vandrel_TApply draws from it.
#include "image_test_support.h"

namespace vdtest {
namespace {

// Every pixel its own colour, so that a pixel in the wrong place shows.
Picture Gradient(int width, int height) {
    return MakePicture(width, height, [](int x, int y) { return Rgb{uint8_t(40 * x + 3), uint8_t(30 * y + 5), 90}; });
}

class TransformFunctionsTest : public ImageSessionTest {
protected:
    TransformFunctionsTest() { EXPECT_EQ(Text(u"Vandrel_TClear"), ""); }
    ~TransformFunctionsTest() override { Text(u"Vandrel_TClear"); }

    FMX_Data Apply(const FMX_Data& picture) { return Eval(u"Vandrel_TApply ( $a )", {picture}); }
    // "width x height" of an applied picture, from its "SIZE" stream, or its status text.
    std::string SizeOf(const FMX_Data& applied) {
        const std::string size = StreamOf(applied, "SIZE");
        if (size.size() != 4) return vdhost::utf8Of(applied);
        const auto big = [&](size_t at) { return uint8_t(size[at]) << 8 | uint8_t(size[at + 1]); };
        return std::to_string(big(0)) + " x " + std::to_string(big(2));
    }
    std::string AppliedSize(const FMX_Data& picture) { return SizeOf(Apply(picture)); }
};

TEST_F(TransformFunctionsTest, ResizeKeepsTheAspectOfAMissingDimensionAndAccumulates) {
    const FMX_Data picture = ContainerWith("BMPf", BmpOf(Gradient(100, 50)));
    EXPECT_EQ(Text(u"Vandrel_TResize ( 200 ; 0 )"), "");
    const FMX_Data applied = Apply(picture);
    EXPECT_EQ(StreamTypes(applied), "VDIM|SIZE|JPEG");
    EXPECT_EQ(StreamOf(applied, "VDIM").substr(0, 4), "PICT");
    EXPECT_EQ(SizeOf(applied), "200 x 100");
    // The first apply left the resize's scale in the matrix, and the second scales once more.
    EXPECT_EQ(AppliedSize(picture), "400 x 200");

    Text(u"Vandrel_TClear");
    Text(u"Vandrel_TResize ( 0 ; 25 )");
    EXPECT_EQ(AppliedSize(picture), "50 x 25");
    Text(u"Vandrel_TClear");
    Text(u"Vandrel_TResize ( 50 ; 100 )");
    EXPECT_EQ(AppliedSize(picture), "50 x 100");
    // Both dimensions 0 make both factors 0: nothing is left to draw.
    Text(u"Vandrel_TClear");
    Text(u"Vandrel_TResize ( 0 ; 0 )");
    EXPECT_EQ(AppliedSize(picture), "$-50:Vandrel_TApply: Conversion to VD image failed");
}

TEST_F(TransformFunctionsTest, AQuadForgetsEarlierCallsAndKeepsLaterOnes) {
    const FMX_Data picture = ContainerWith("BMPf", BmpOf(Gradient(40, 20)));
    const std::u16string unchanged = u"Vandrel_TQuad ( 100 ; 0 ; 0 ; 100 ; 0 ; 100 ; 100 ; 0 ; 100 )";
    Text(u"Vandrel_TScale ( 2 ; 2 )");
    EXPECT_EQ(Text(unchanged), "");
    EXPECT_EQ(AppliedSize(picture), "40 x 20");

    Text(u"Vandrel_TClear");
    Text(unchanged);
    Text(u"Vandrel_TScale ( 2 ; 2 )");
    EXPECT_EQ(AppliedSize(picture), "80 x 40");

    // Corners in units of which 10 span the picture: the right half of it.
    Text(u"Vandrel_TClear");
    Text(u"Vandrel_TQuad ( 10 ; 5 ; 0 ; 10 ; 0 ; 10 ; 10 ; 5 ; 10 )");
    EXPECT_EQ(AppliedSize(picture), "20 x 20");
}

TEST_F(TransformFunctionsTest, EachStartOfThePlugInBeginsWithNoTransformation) {
    const FMX_Data picture = ContainerWith("BMPf", BmpOf(Gradient(40, 20)));
    Text(u"Vandrel_TScale ( 2 ; 2 )");
    session_.reset();
    session_.emplace(BundleSession(root_.path() / "Base.vddb"));
    EXPECT_EQ(AppliedSize(picture), "40 x 20");
}

TEST_F(TransformFunctionsTest, CropTakesItsRectangleUnlessItsLeftIsMinusOne) {
    const Picture source = Gradient(6, 5);
    const FMX_Data picture = ContainerWith("BMPf", BmpOf(source));
    Text(u"Vandrel_TCrop ( -1 ; 1 ; 3 ; 3 )");
    EXPECT_EQ(AppliedSize(picture), "6 x 5");

    EXPECT_EQ(Text(u"Vandrel_TCrop ( 2 ; 1 ; 5 ; 3 )"), "");
    const std::optional<Picture> cropped = PixelsOf(Apply(picture));
    ASSERT_TRUE(cropped);
    ASSERT_EQ(cropped->width, 3);
    ASSERT_EQ(cropped->height, 2);
    for (int y = 0; y < 2; ++y)
        for (int x = 0; x < 3; ++x) EXPECT_EQ(cropped->At(x, y), source.At(x + 2, y + 1)) << x << "," << y;

    // The resize measures the crop, not the picture.
    Text(u"Vandrel_TResize ( 6 ; 0 )");
    EXPECT_EQ(AppliedSize(picture), "6 x 4");
}

TEST_F(TransformFunctionsTest, AQuarterTurnMovesEveryPixelWhereItBelongs) {
    const Picture source = Gradient(5, 3);
    const FMX_Data png = Convert(ContainerWith("BMPf", BmpOf(source)), "PNGf");  // read by libvips
    for (const FMX_Data& picture : {png, ContainerWith("BMPf", BmpOf(source))}) {
        Text(u"Vandrel_TClear");
        EXPECT_EQ(Text(u"Vandrel_TRotate ( 90 )"), "");
        const std::optional<Picture> turned = PixelsOf(Apply(picture));
        ASSERT_TRUE(turned);
        ASSERT_EQ(turned->width, 3);
        ASSERT_EQ(turned->height, 5);
        // Clockwise on the screen: the left column becomes the top row, read from the bottom.
        for (int y = 0; y < 5; ++y)
            for (int x = 0; x < 3; ++x) EXPECT_EQ(turned->At(x, y), source.At(y, 2 - x)) << x << "," << y;
    }
}

TEST_F(TransformFunctionsTest, APerspectiveLeavesWhiteWhereThePictureDoesNotReach) {
    const Picture grey = MakePicture(60, 60, [](int, int) { return Rgb{100, 100, 100}; });
    Text(u"Vandrel_TQuad ( 100 ; 25 ; 0 ; 75 ; 0 ; 100 ; 100 ; 0 ; 100 )");
    const std::optional<Picture> drawn = PixelsOf(Apply(ContainerWith("BMPf", BmpOf(grey))));
    ASSERT_TRUE(drawn);
    ASSERT_EQ(drawn->width, 60);
    ASSERT_EQ(drawn->height, 60);
    EXPECT_EQ(drawn->At(1, 1), (Rgb{255, 255, 255}));
    EXPECT_EQ(drawn->At(58, 1), (Rgb{255, 255, 255}));
    EXPECT_EQ(drawn->At(30, 1), (Rgb{100, 100, 100}));
    EXPECT_EQ(drawn->At(1, 58), (Rgb{100, 100, 100}));
    EXPECT_EQ(drawn->At(30, 30), (Rgb{100, 100, 100}));

    // A skew and a turn together still fill the middle and leave the corners white.
    Text(u"Vandrel_TClear");
    Text(u"Vandrel_TSkew ( 0.5 ; 0 )");
    Text(u"Vandrel_TRotate ( 30 )");
    const std::optional<Picture> skewed = PixelsOf(Apply(ContainerWith("BMPf", BmpOf(grey))));
    ASSERT_TRUE(skewed);
    EXPECT_EQ(skewed->At(0, 0), (Rgb{255, 255, 255}));
    EXPECT_EQ(skewed->At(skewed->width / 2, skewed->height / 2), (Rgb{100, 100, 100}));
}

TEST_F(TransformFunctionsTest, FailuresSayWhatWentWrong) {
    const FMX_Data picture = ContainerWith("BMPf", BmpOf(Gradient(20, 20)));
    EXPECT_EQ(Text(u"Vandrel_TApply ( \"no such picture.png\" )"),
              "$-43:Vandrel_TApply: Could not find referenced image file");
    EXPECT_EQ(Text(u"Vandrel_TApply ( $a )", {ContainerWith("PNGf", "not a picture")}),
              "$-2003:Vandrel_TApply: Could not find QT importer for this type.");
    // A drawing too large to hold is refused before anything is drawn.
    Text(u"Vandrel_TScale ( 20000 ; 20000 )");
    EXPECT_EQ(AppliedSize(picture), "$-108:Vandrel_TApply: Conversion to VD image failed");
    Text(u"Vandrel_TClear");
    Text(u"Vandrel_TCrop ( 100 ; 100 ; 200 ; 200 )");
    EXPECT_EQ(AppliedSize(picture), "$-50:Vandrel_TApply: Conversion to VD image failed");
    Text(u"Vandrel_TClear");
    Text(u"Vandrel_TQuad ( 100 ; 0 ; 0 ; 50 ; 0 ; 100 ; 0 ; 30 ; 0 )");  // all corners on one line
    EXPECT_EQ(AppliedSize(picture), "$-50:Vandrel_TApply: Conversion to VD image failed");
    Text(u"Vandrel_TClear");
    EXPECT_EQ(AppliedSize(picture), "20 x 20");
}

}  // namespace
}  // namespace vdtest
