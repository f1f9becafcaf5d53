// Vandrel_DrawWaveform through the host: the stored picture's streams and size, where the bands
// of each selector land in the decoded picture, time ranges, and every refusal.
#include "platform/graphics/jpeg_codec.h"
#include "plugin/sound/sound_test_support.h"

namespace vdtest {
namespace {

using media::Pcm16Wav;
using media::SineWav;

class WaveformFunctionTest : public SoundSessionTest {
protected:
    // Vandrel_DrawWaveform ( path ; selector ; width ; height ; start ; end ; wave ; back ).
    FMX_Data Draw(const std::string& path, const std::string& selector, double width, double height,
                  const std::string& start = "", const std::string& end = "", const std::string& wave = "#FF0000",
                  const std::string& back = "#0000FF") {
        vdhost::calc::Variables locals;
        const std::pair<const char16_t*, FMX_Data> values[] = {
            {u"$p", vdhost::makeTextUtf8(path)},   {u"$s", vdhost::makeTextUtf8(selector)},
            {u"$w", vdhost::makeNumber(width)},    {u"$h", vdhost::makeNumber(height)},
            {u"$t0", vdhost::makeTextUtf8(start)}, {u"$t1", vdhost::makeTextUtf8(end)},
            {u"$c", vdhost::makeTextUtf8(wave)},   {u"$b", vdhost::makeTextUtf8(back)}};
        for (const auto& [name, value] : values) locals.set(name, value);
        return session_->evaluate(u"Vandrel_DrawWaveform ( $p ; $s ; $w ; $h ; $t0 ; $t1 ; $c ; $b )", locals);
    }

    std::string LastError() { return Text(u"Vandrel_GetLastError"); }

    // The picture of a result: its "JPEG" stream (which must come first, then "SIZE") decoded.
    vd::platform::DecodedImage Picture(const FMX_Data& result, int expectWidth, int expectHeight) {
        vd::platform::DecodedImage image;
        const auto& streams = result.binary.streams;
        const bool twoStreams = vdhost::isContainer(result) && streams.size() == 2;
        EXPECT_TRUE(twoStreams) << LastError();
        if (!twoStreams) return image;
        EXPECT_EQ(vdhost::fourCharText(streams[0].type) + vdhost::fourCharText(streams[1].type), "JPEGSIZE");
        EXPECT_EQ(*streams[1].bytes, (vdhost::Bytes{uint8_t(expectWidth >> 8), uint8_t(expectWidth),
                                                    uint8_t(expectHeight >> 8), uint8_t(expectHeight)}));
        const auto& jpeg = *streams[0].bytes;
        EXPECT_EQ(vd::platform::DecodeImage(jpeg.data(), jpeg.size(), image), 0);
        EXPECT_EQ(std::pair(image.width, image.height), std::pair(expectWidth, expectHeight));
        return image;
    }
};

// The colour class of a decoded pixel: W white, B blue (background), R red (waveform), ? between.
char Class(const uint8_t* rgb) {
    auto near = [&](int r, int g, int b) {
        return std::abs(rgb[0] - r) < 60 && std::abs(rgb[1] - g) < 60 && std::abs(rgb[2] - b) < 60;
    };
    return near(255, 255, 255) ? 'W' : near(0, 0, 255) ? 'B' : near(255, 0, 0) ? 'R' : '?';
}

// The classes of column x at the rows, away from JPEG's blurred edges.
std::string Rows(const vd::platform::DecodedImage& image, int32_t x, std::initializer_list<int32_t> rows) {
    std::string classes;
    for (int32_t y : rows) classes += Class(image.At(x, y));
    return classes;
}

TEST_F(WaveformFunctionTest, SelectorsPlaceTheirBandsAndThePictureIsOnePixelSmaller) {
    // Stereo silence: each band's curve is a line across its middle row.
    const std::string path = Write("silence.wav", Pcm16Wav(std::vector<int16_t>(2 * 4410, 0), 2));
    // One band: rows 20-179 plotted (middle row 100); two bands of 90: rows 20-89 and 110-179.
    for (const char* one : {"1/LEFT", " +1/1 "}) {
        auto picture = Picture(Draw(path, one, 300, 200), 299, 199);
        if (picture.width == 0) continue;
        EXPECT_EQ(Rows(picture, 150, {5, 15, 25, 60, 95, 100, 105, 140, 175, 185, 195}), "WWBBBRBBBWW") << one;
    }
    for (const char* all : {"1", "1/ALL"}) {
        auto picture = Picture(Draw(path, all, 300, 200), 299, 199);
        if (picture.width == 0) continue;
        EXPECT_EQ(Rows(picture, 150, {10, 25, 55, 85, 95, 105, 115, 145, 175, 190}), "WBRBWWBRBW") << all;
    }
    EXPECT_EQ(LastError(), "$0:Vandrel_DrawWaveform: No error.");
}

TEST_F(WaveformFunctionTest, LoudSamplesReachTheTopAndATimeRangeIsDrawnAlone) {
    // First half second silence, second half the loudest positive sample, mono.
    std::vector<int16_t> samples(44100, 0);
    std::fill(samples.begin() + 22050, samples.end(), int16_t(32767));
    const std::string path = Write("step.wav", Pcm16Wav(samples, 1));

    // The whole sound: silence on the left half (middle row 100), the top row 20 on the right.
    auto whole = Picture(Draw(path, "1", 400, 200), 399, 199);
    ASSERT_EQ(whole.width, 399);
    EXPECT_EQ(Rows(whole, 100, {20, 100}), "BR");
    EXPECT_EQ(Rows(whole, 300, {20, 100}), "RB");
    // Only the second half, given as numbers or time texts: the top row across the width.
    for (const auto& [start, end] : {std::pair{"0.5", "1"}, std::pair{"0:00.5", ""}}) {
        auto range = Picture(Draw(path, "1", 400, 200, start, end), 399, 199);
        ASSERT_EQ(range.width, 399);
        EXPECT_EQ(Rows(range, 100, {20, 100}), "RB") << start << " " << end;
    }
    // Default colours: black on white.
    auto plain = Picture(Draw(path, "1", 400, 200, "", "", "", ""), 399, 199);
    ASSERT_EQ(plain.width, 399);
    EXPECT_LT(plain.At(300, 20)[0], 60);
    EXPECT_GT(plain.At(300, 100)[0], 200);
}

TEST_F(WaveformFunctionTest, EverySoundTrackOfACompressedFileCanBeDrawn) {
    VD_REQUIRE_FFMPEG();
    // Track 1 silent, track 2 loud: converting both into one sound would lose track 2.
    const std::string silent = Write("silent.wav", Pcm16Wav(std::vector<int16_t>(2 * 22050, 0), 2));
    const std::string loud = Write("loud.wav", SineWav(22050, 2));
    const auto both = Data() / "two.m4a";
    media::Ffmpeg({"-i", silent, "-i", loud, "-map", "0", "-map", "1", "-c:a", "aac", both.string()});
    // The curve's centre row is drawn either way; 15 rows above it only the loud track reaches.
    EXPECT_EQ(Rows(Picture(Draw(both.string(), "2/LEFT", 300, 200), 299, 199), 150, {85, 100}), "RR");
    EXPECT_EQ(Rows(Picture(Draw(both.string(), "1/LEFT", 300, 200), 299, 199), 150, {85, 100}), "BR");
    EXPECT_TRUE(LeftoverTemporaryFiles().empty());
}

TEST_F(WaveformFunctionTest, RefusalsLeaveNoResultAndSayWhy) {
    const std::string stereo = Write("stereo.wav", SineWav(4410, 2));
    const std::string eightBit = Write("eight.wav", SineWav(4410, 1, 44100, 8));
    struct Case { std::string path, selector; double width, height; std::string start, wave, status; } cases[] = {
        {stereo, "1/2", 300, 200, "", "red", "$-205:Vandrel_DrawWaveform: Bad sound channel."},
        {stereo, "1/RIGHTER", 300, 200, "", "red",
         "$-50:Vandrel_DrawWaveform: Invalid track/channel specified in parameter #2."},
        {stereo, "2", 300, 200, "", "red", "$-2028:Vandrel_DrawWaveform: No such track exists."},
        {stereo, "1", 16384, 16384, "", "red", "$-108:Vandrel_DrawWaveform: Memory full error."},
        {stereo, "1", 0, 200, "", "red", "$-50:Vandrel_DrawWaveform: Wrong parameter(s)."},
        {stereo, "1", 300, 61, "", "red",
         "$-50:Vandrel_DrawWaveform: The height in parameter #4 leaves no room to draw every channel."},
        {stereo, "1", 300, 200, "soon", "red", "$-50:Vandrel_DrawWaveform: Could not get parameter #5 as time."},
        {stereo, "1", 300, 200, "", "#GG0000", "$-50:Vandrel_DrawWaveform: Could not get parameter #7 as HTML color."},
        {stereo, "1", 1, 200, "", "red", "$-50:Vandrel_DrawWaveform: Failed to put picture into container."},
        {eightBit, "1", 300, 200, "", "red", "$-4:Vandrel_DrawWaveform: Feature is not implemented yet."},
        {"", "1", 300, 200, "", "red", "$-50:Vandrel_DrawWaveform: Could not get parameter #1 as movie."},
    };
    for (const auto& c : cases) {
        FMX_Data result = Draw(c.path, c.selector, c.width, c.height, c.start, "", c.wave);
        EXPECT_TRUE(vdhost::utf8Of(result).empty() && (!vdhost::isContainer(result) || result.binary.streams.empty()))
            << c.status;
        EXPECT_EQ(LastError(), c.status);
    }
    // A stereo sound has two bands, so 62 rows are the least that leave each one row to plot in.
    EXPECT_TRUE(vdhost::isContainer(Draw(stereo, "1", 300, 62)));
    EXPECT_TRUE(LeftoverTemporaryFiles().empty());
}

TEST_F(WaveformFunctionTest, WithoutAJpegSaverThePictureCannotBeStored) {
    const std::string path = Write("tone.wav", SineWav(4410, 2));
    ScopedEnv noJpeg("VANDREL_JPEG_EXPORT", "absent");
    session_.reset();
    session_.emplace(BundleSession(Data() / "Base.vddb"));
    FMX_Data result = Draw(path, "1", 300, 200);
    EXPECT_FALSE(vdhost::isContainer(result) && !result.binary.streams.empty());
    EXPECT_EQ(LastError(), "$-2005:Vandrel_DrawWaveform: Failed to put picture into container.");
}

}  // namespace
}  // namespace vdtest
