// Converting pictures between every format the plug-in writes, through the host as a database would.
#include "image_test_support.h"

namespace vdtest {
namespace {

// 8 x 8 blocks of a few colours: every format keeps them exactly (GIF's palette included) and
// JPEG codes each block by its mean alone.
Picture Blocks(int width, int height) {
    const Rgb palette[] = {{200, 30, 40}, {20, 160, 70}, {30, 60, 210}, {250, 250, 250},
                           {10, 10, 10},  {240, 200, 20}, {120, 40, 160}, {90, 200, 220}};
    return MakePicture(width, height, [&](int x, int y) { return palette[(x / 8 + 3 * (y / 8)) % 8]; });
}

class ImageConversionTest : public ImageSessionTest {};

TEST_F(ImageConversionTest, EveryWritableTypeRoundTrips) {
    const Picture source = Blocks(64, 40);
    const FMX_Data bmp = ContainerWith("BMPf", BmpOf(source));
    const std::string list = Text(u"Vandrel_ListImageOutputTypes");
    for (const char* type : {"JPEG", "PNGf", "TIFF", "GIFf", "jp2 ", "WEBP", "heic", "PICT", "8BPS", ".sgi", "TPIC",
                             "BMPf", "qtif"}) {
        SCOPED_TRACE(type);
        const bool lossy = std::string(type) == "JPEG" || std::string(type) == "heic";
        if (std::string(type) == "heic" && list.find("heic|") == std::string::npos) continue;  // no encoder here
        // Quality 921 is 90 on the encoders' scale; 1024 asks for lossless where a format has both.
        const FMX_Data converted = Convert(bmp, type, 24, lossy ? 921 : 1024);
        ASSERT_EQ(StreamTypes(converted).substr(0, 4), type) << StreamTypes(converted);
        const std::optional<Picture> back = PixelsOf(converted);
        ASSERT_TRUE(back);
        if (lossy) {
            EXPECT_GT(Psnr(*back, source), 40.0);
        } else {
            EXPECT_EQ(back->width, source.width);
            EXPECT_EQ(back->height, source.height);
            EXPECT_TRUE(back->pixels == source.pixels);
        }
    }
}

TEST_F(ImageConversionTest, MacPaintKeepsBlackAndWhiteAtItsOwnSize) {
    const Picture source = MakePicture(576, 720, [](int x, int y) {
        return (x * 7 + y * 3) % 11 < 4 || (y > 600 && x < 40) ? Rgb{0, 0, 0} : Rgb{255, 255, 255};
    });
    const FMX_Data converted = Convert(ContainerWith("BMPf", BmpOf(source)), "PNTG");
    EXPECT_EQ(StreamTypes(converted), "PNTG|SIZE|JPEG");
    const std::optional<Picture> back = PixelsOf(converted);
    ASSERT_TRUE(back);
    EXPECT_TRUE(back->pixels == source.pixels);
}

// A MacPaint file written here: a header, then each row as PackBits runs.
TEST_F(ImageConversionTest, ReadsMacPaintAndQuickTimeImagesWrittenElsewhere) {
    std::string paint(512, '\0');
    for (int y = 0; y < 720; ++y) {
        if (y % 2 == 0) {
            paint += char(-71), paint += char(0xF0);  // 72 bytes of four black, four white
        } else {
            paint += char(71);  // 72 literal bytes: black only in the first
            paint += char(0x80);
            paint.append(71, '\0');
        }
    }
    const std::optional<Picture> painted = PixelsOf(Convert(ContainerWith("PNTG", paint), "PNGf"));
    ASSERT_TRUE(painted);
    ASSERT_EQ(painted->width, 576);
    ASSERT_EQ(painted->height, 720);
    EXPECT_EQ(painted->At(3, 0), (Rgb{0, 0, 0}));
    EXPECT_EQ(painted->At(4, 0), (Rgb{255, 255, 255}));
    EXPECT_EQ(painted->At(0, 1), (Rgb{0, 0, 0}));
    EXPECT_EQ(painted->At(1, 1), (Rgb{255, 255, 255}));
    EXPECT_EQ(Text(u"Vandrel_ConvertImage ( $a ; \"PNGf\" )", {ContainerWith("PNTG", paint.substr(0, 900))}),
              "$-2001:Vandrel_ConvertImage: Could not find QT importer for this type.");

    // A QuickTime image around a PNG, its atoms put together here.
    const Picture source = Blocks(24, 16);
    const std::string png = StreamOf(Convert(ContainerWith("BMPf", BmpOf(source)), "PNGf"), "PNGf");
    auto be = [](uint32_t v, int bytes) {
        std::string s;
        for (int i = bytes - 1; i >= 0; --i) s += char(uint8_t(v >> (8 * i)));
        return s;
    };
    std::string description = be(86, 4) + "png " + std::string(6, '\0') + be(0, 2) + std::string(16, '\0') + be(24, 2) +
                              be(16, 2) + be(72 << 16, 4) + be(72 << 16, 4) + be(0, 4) + be(1, 2) + std::string(32, '\0') +
                              be(24, 2) + be(0xFFFF, 2);
    ASSERT_EQ(description.size(), 86u);
    const std::string qtif = be(8 + 86, 4) + "idsc" + description + be(uint32_t(8 + png.size()), 4) + "idat" + png;
    const std::optional<Picture> unwrapped = PixelsOf(ContainerWith("qtif", qtif));
    ASSERT_TRUE(unwrapped);
    EXPECT_TRUE(unwrapped->pixels == source.pixels);
}

TEST_F(ImageConversionTest, ResultStreamsFollowTheTargetType) {
    const FMX_Data bmp = ContainerWith("BMPf", BmpOf(Blocks(300, 200)));
    const FMX_Data tiff = Convert(bmp, "TIFF");
    EXPECT_EQ(StreamTypes(tiff), "TIFF|SIZE|JPEG");
    EXPECT_EQ(StreamOf(tiff, "SIZE"), std::string("\x01\x2C\x00\xC8", 4));
    EXPECT_EQ(StreamOf(tiff, "JPEG"), StreamOf(tiff, "SIZE"));  // the 4-byte placeholder
    EXPECT_EQ(StreamTypes(Convert(bmp, "JPEG")), "JPEG|SIZE");

    const FMX_Data pict = Convert(bmp, "PICT");
    EXPECT_EQ(StreamTypes(pict), "PICT|SIZE");
    // Without its 512-byte file header the picture starts with its size and frame.
    EXPECT_EQ(StreamOf(pict, "PICT").substr(6, 4), std::string("\x00\xC8\x01\x2C", 4));

    const FMX_Data jp2 = Convert(bmp, "jp2 ");
    EXPECT_EQ(StreamTypes(jp2), "jp2 |SIZE|JPEG");
    const std::string preview = StreamOf(jp2, "JPEG");
    EXPECT_GT(preview.size(), 100u);
    EXPECT_EQ(preview.substr(0, 3), "\xFF\xD8\xFF");
    Text(u"Vandrel_SetImageDefaults ( -1 ; 1 )");
    EXPECT_EQ(StreamTypes(Convert(bmp, "jp2 ")), "jp2 |SIZE");

    // A whole line of the output list names its type; an empty type keeps the source's.
    EXPECT_EQ(StreamTypes(Convert(bmp, "PNGf|png|PNG Image")), "PNGf|SIZE|JPEG");
    EXPECT_EQ(StreamTypes(Convert(bmp, "")), "BMPf|SIZE|JPEG");
}

TEST_F(ImageConversionTest, TheListNamesWhatCanBeWritten) {
    const std::string list = Text(u"Vandrel_ListImageOutputTypes");
    for (const char* line : {"JPEG|jpg|JPEG Image\r", "PICT|pct|PICT Picture\r", "8BPS|psd|Photoshop Image\r",
                             ".sgi|sgi|SGI Image\r", "TPIC|tga|TGA Image\r", "BMPf|bmp|BMP Image\r",
                             "PNTG|pnt|MacPaint Image\r", "qtif|qti|QuickTime Image\r", "WEBP|web|WebP Image\r"})
        EXPECT_NE(list.find(line), std::string::npos) << line;
    EXPECT_EQ(list.find("snd "), std::string::npos);
}

// The preview mark as its rectangles outline it, computed here from the picture's size alone: a
// pixel is inside when an odd number of the rectangles hold it.
bool InPreviewMark(int x, int y, int w, int h) {
    const int s = std::min(w, h);
    const int a = s <= 31 ? 2 : s / 16, t = s <= 31 || s < 128 ? 1 : s / 128;
    struct R {
        int l, t, r, b;
    };
    const R outer{0, 0, w, h};
    const R inner{w / 16, h / 16, w - w / 16, h - h / 16};
    const int bar = inner.b / 16;
    const R rects[] = {outer,
                       inner,
                       {inner.l + t, inner.t + t, inner.r - t, inner.b - t},
                       {inner.l + a, inner.t, inner.r - a, inner.b},
                       {inner.l + a, inner.t + t, inner.r - a, inner.b - t},
                       {inner.l, inner.t + bar, inner.r, inner.b - bar},
                       {inner.l + t, inner.t + bar, inner.r - t, inner.b - bar}};
    int count = 0;
    for (const R& r : rects) count += x >= r.l && x < r.r && y >= r.t && y < r.b;
    return count % 2 == 1;
}

TEST_F(ImageConversionTest, ThePreviewShowsThePictureOnlyInsideItsMark) {
    Text(u"Vandrel_SetImageDefaults ( 1024 ; 1 )");
    const int w = 300, h = 180;
    const FMX_Data jp2 = Convert(ContainerWith("BMPf", BmpOf(MakePicture(w, h, [](int, int) { return Rgb{220, 0, 0}; }))),
                                 "jp2 ");
    const std::optional<Picture> preview = PixelsOf(ContainerWith("JPEG", StreamOf(jp2, "JPEG")));
    ASSERT_TRUE(preview);
    ASSERT_EQ(preview->width, w);
    int wrong = 0;
    for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x) {
            const bool red = preview->At(x, y).g < 128;
            wrong += red != InPreviewMark(x, y, w, h);
        }
    EXPECT_EQ(wrong, 0);

    Text(u"Vandrel_SetImageDefaults ( 1024 ; 0 )");
    const std::optional<Picture> unmarked = PixelsOf(ContainerWith("JPEG", StreamOf(Convert(jp2, "jp2 "), "JPEG")));
    ASSERT_TRUE(unmarked);
    EXPECT_LT(unmarked->At(w / 2, h / 2).g, 40);  // the middle, outside any mark, is drawn
}

TEST_F(ImageConversionTest, PreviewQualityIsClamped) {
    const FMX_Data bmp = ContainerWith("BMPf", BmpOf(Blocks(200, 120)));
    Text(u"Vandrel_SetImageDefaults ( 5000 ; 0 )");
    const size_t best = StreamOf(Convert(bmp, "jp2 "), "JPEG").size();
    Text(u"Vandrel_SetImageDefaults ( 1024 ; 0 )");
    EXPECT_EQ(StreamOf(Convert(bmp, "jp2 "), "JPEG").size(), best);
    Text(u"Vandrel_SetImageDefaults ( -7 ; 0 )");
    EXPECT_EQ(StreamTypes(Convert(bmp, "jp2 ")), "jp2 |SIZE");
}

TEST_F(ImageConversionTest, KeptSettingsApplyToLaterShortCalls) {
    const FMX_Data bmp = ContainerWith("BMPf", BmpOf(Blocks(64, 40)));
    const FMX_Data grey = Convert(bmp, "PNGf", 40, -1);
    const std::string again = StreamOf(Convert(bmp, "PNGf"), "PNGf");  // the depth is still 40
    EXPECT_EQ(again, StreamOf(grey, "PNGf"));
    const std::optional<Picture> back = PixelsOf(grey);
    ASSERT_TRUE(back);
    EXPECT_EQ(back->At(0, 0).r, back->At(0, 0).g);

    // A target size makes a smaller JPEG than the best quality does.
    const FMX_Data photo = ContainerWith("BMPf", BmpOf(MakePicture(256, 256, [](int x, int y) {
        return Rgb{uint8_t(x), uint8_t(y), uint8_t((x * y) % 251)};
    })));
    const size_t large = StreamOf(Convert(photo, "JPEG", 24, 1023), "JPEG").size();
    const FMX_Data fitted = Eval(u"Vandrel_ConvertImage ( $a ; \"JPEG\" ; 24 ; -1 ; -1 ; 9000 ; 1023 ; -1 ; -1 ; -1 ; -1 )", {photo});
    EXPECT_LE(StreamOf(fitted, "JPEG").size(), 9000u);
    EXPECT_GT(large, 9000u);

    // Without recompression a picture already in the target type is passed on byte for byte.
    const std::string png = StreamOf(Convert(bmp, "PNGf", -1, -1), "PNGf");
    const FMX_Data passed =
        Eval(u"Vandrel_ConvertImage ( $a ; \"PNGf\" ; -1 ; -1 ; -1 ; -1 ; -1 ; -1 ; 1 ; -1 ; -1 )", {ContainerWith("PNGf", png + "trailing")});
    EXPECT_EQ(StreamOf(passed, "PNGf"), png + "trailing");
}

TEST_F(ImageConversionTest, FailuresSayWhatWentWrong) {
    const FMX_Data bmp = ContainerWith("BMPf", BmpOf(Blocks(16, 16)));
    // Headers that claim more pixels than can be held are refused before anything is allocated.
    std::string huge = BmpOf(Blocks(16, 16));
    huge.replace(18, 8, std::string("\x40\x9C\x00\x00\x40\x9C\x00\x00", 8));  // 40000 x 40000
    const std::string badCode = "Image type code must be exactly 4 characters, empty, or start a list of items";
    const std::string noExporter = "$-2005:Vandrel_ConvertImage: Could not find QT exporter for specified image type";
    const std::string noImporter = ":Vandrel_ConvertImage: Could not find QT importer for this type.";
    const struct { std::u16string arguments; FMX_Data source; std::string expected; } cases[] = {
        {u"$a ; \"JPG\"", bmp, "$20101:Vandrel_ConvertImage: " + badCode},
        {u"$a ; 1234", bmp, "$20102:Vandrel_ConvertImage: Image type code must be text"},
        {u"$a ; \"JPEG\" ; 1 ; 2 ; 3 ; 4 ; 5 ; 6 ; 7 ; 8", bmp, "$20100:Vandrel_ConvertImage: Requires either 2 or 10 parameters"},
        {u"$a ; \"XYZW\"", bmp, noExporter},
        {u"$a ; \"snd \"", bmp, noExporter},
        {u"$a ; \"PNGf\"", ContainerWith("PNGf", "not a picture at all"), "$-2003" + noImporter},
        // PICT has no signature: bytes that are no picture are refused, never read as another format.
        {u"$a ; \"PNGf\"", ContainerWith("PICT", std::string(300, '\x07')), "$-2001" + noImporter},
        {u"$a ; \"PNGf\"", ContainerWith("BMPf", huge), "$-108" + noImporter},
        {u"$a ; \"PNGf\"", ContainerWith("FNAM", "\x01x"), "$20400:Vandrel_ConvertImage: Parameter must be image or path"},
        {u"\"no such picture.png\" ; \"PNGf\"", bmp, "$-43:Vandrel_ConvertImage: Could not find referenced image file"},
        {u"$a ; \"PNGf\" ; -1 ; -1 ; -1 ; -1 ; -1 ; 5 ; -1 ; -1 ; -1", bmp, "$-50:Vandrel_ConvertImage: Conversion failed"},
    };
    for (const auto& c : cases) EXPECT_EQ(Text(u"Vandrel_ConvertImage ( " + c.arguments + u" )", {c.source}), c.expected);
    EXPECT_EQ(Text(u"Vandrel_ConversionDialog ( \"JP\" )"), "$20101:Vandrel_ConversionDialog: " + badCode);
}

TEST_F(ImageConversionTest, APictureFromTheSystemOpensAndConverts) {
    const char* candidates[] = {"/usr/share/pixmaps/debian-logo.png", "/usr/share/icons/hicolor/48x48/apps/debian-logo.png",
                                "/usr/share/icons/Adwaita/48x48/legacy/document-new.png"};
    std::string found;
    for (const char* path : candidates)
        if (std::filesystem::exists(path)) found = path;
    if (found.empty()) GTEST_SKIP() << "no picture of a Debian package here";
    const std::string header = readFile(found).substr(16, 8);
    const FMX_Data converted = Convert(vdhost::makeTextUtf8(found), "JPEG");
    ASSERT_EQ(StreamTypes(converted), "JPEG|SIZE");
    const std::string size = StreamOf(converted, "SIZE");
    EXPECT_EQ(size.substr(0, 2), header.substr(2, 2));  // the PNG's width, big-endian
    EXPECT_EQ(size.substr(2, 2), header.substr(6, 2));
    EXPECT_TRUE(PixelsOf(converted));
}

TEST_F(ImageConversionTest, TheDialogAnswersTheChosenSettingsAsText) {
    ScopedEnv script("VANDREL_UI_SCRIPT", Path("answers.txt"));
    auto dialog = [&](const std::string& type, const std::string& answer) {
        Write("answers.txt", answer + "\n");
        return Text(u"Vandrel_ConversionDialog ( $a )", {vdhost::makeTextUtf8(type)});
    };
    const std::string plain = dialog("JPEG", "ok");
    const std::string chosen = dialog("JPEG|jpg|JPEG Image", "ok depth=grey quality=high");
    EXPECT_EQ(plain.rfind("<hex>", 0), 0u) << plain;
    EXPECT_EQ(chosen.rfind("<hex>", 0), 0u) << chosen;
    EXPECT_NE(plain, chosen);
    EXPECT_EQ(dialog("JPEG", "ok depth=grey quality=high"), chosen);
    EXPECT_EQ(dialog("TIFF", "ok compression=packbits").rfind("<hex>", 0), 0u);
    EXPECT_EQ(dialog("JPEG", "cancel"), "$-128:Vandrel_ConversionDialog: Operation canceled by the user.");
    EXPECT_EQ(dialog("XYZW", "ok"), "$-2005:Vandrel_ConversionDialog: Could not find QT exporter for specified image type");
}

}  // namespace
}  // namespace vdtest
