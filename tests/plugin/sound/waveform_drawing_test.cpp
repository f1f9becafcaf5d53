// Waveform pictures drawn in memory: the selector grammar, where bands and samples land, the
// polyline of short sounds and the column strokes of long ones.
#include "sound/waveform/waveform_drawing.h"
#include "sound/waveform/waveform_selector.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

namespace vdtest {
namespace {

using namespace vd::platform;
using namespace vd::sound;

constexpr Rgba kWhite{255, 255, 255, 255};
constexpr Rgba kBlue{0, 0, 255, 255};
constexpr Rgba kRed{255, 0, 0, 255};
constexpr int32_t kAll = WaveformSelection::kAllChannels;

TEST(WaveformSelector, TracksChannelsAndKeywords) {
    struct Case { const char* text; int32_t track, channel; } good[] = {
        {" \r +2", 2, kAll}, {"1/left", 1, 0}, {"1/Right \r", 1, 1}, {"1/all", 1, kAll}, {"3/2", 3, 2}, {"0", 0, kAll},
        {"99999999999/1", std::numeric_limits<int32_t>::max(), 1},
    };
    for (const auto& c : good) {
        auto s = ParseWaveformSelector(c.text);
        ASSERT_TRUE(s) << c.text;
        EXPECT_EQ(s->track, c.track) << c.text;
        EXPECT_EQ(s->channel, c.channel) << c.text;
    }
    const char* bad[] = {"", "/1", "1/", "1/LEFTOVER", "1/LEFT x", "1 /LEFT", "-1", "++1", "1/2/3"};
    for (const char* text : bad) EXPECT_FALSE(ParseWaveformSelector(text)) << text;
    // A channel number is read for at most 63 characters; a longer one leaves junk behind it.
    EXPECT_TRUE(ParseWaveformSelector("1/" + std::string(63, '0')));
    EXPECT_FALSE(ParseWaveformSelector("1/" + std::string(64, '0')));
}

// Draws frames (interleaved, channels wide) fed in blocks of blockFrames.
PixelBuffer Draw(int32_t width, int32_t height, const std::vector<int16_t>& frames, int32_t channels,
                 std::vector<int32_t> drawn, int64_t blockFrames = 1 << 16) {
    auto picture = PixelBuffer::Make(width, height);
    EXPECT_TRUE(picture);
    const int64_t total = int64_t(frames.size()) / channels;
    WaveformPainter painter(*picture, std::move(drawn), channels, total, WaveformColors{kRed, kBlue});
    for (int64_t first = 0; first < total; first += blockFrames)
        painter.Feed(frames.data() + first * channels, std::min(blockFrames, total - first));
    return std::move(*picture);
}

// The colours of one column, top to bottom: W white, B background, R waveform.
std::string Column(const PixelBuffer& p, int32_t x) {
    std::string rows;
    for (int32_t y = 0; y < p.Height(); ++y) {
        Rgba c = p.PixelAt(x, y);
        rows += c == kWhite ? 'W' : c == kBlue ? 'B' : c == kRed ? 'R' : '?';
    }
    return rows;
}
std::string W(int32_t rows) { return std::string(size_t(rows), 'W'); }
std::string B(int32_t rows) { return std::string(size_t(rows), 'B'); }

TEST(WaveformLayout, BandsSitBelowTheirMarginsAndTheLastColumnStaysOut) {
    // Two channels in 100 rows: bands of 40, plotting rows 20-39 and 60-79, margins white.
    // Silence sits at row top + 10 of a 20-row area.
    PixelBuffer p = Draw(10, 100, std::vector<int16_t>(2 * 50, 0), 2, {0, 1});
    EXPECT_EQ(Column(p, 3), W(20) + B(10) + "R" + B(9) + W(20) + B(10) + "R" + B(9) + W(20));
    // The last column gets no background (it is not stored); the curve still crosses it.
    EXPECT_EQ(Column(p, 9).find('B'), std::string::npos);

    EXPECT_TRUE(WaveformBands(41, 1).Fit());
    EXPECT_FALSE(WaveformBands(40, 1).Fit());
}

TEST(WaveformLayout, ExtremeSamplesTouchTheEdgesOfTheirChannelsPlottingArea) {
    // One channel of 60 rows: plotting rows 20-39. Constant sounds draw one row each.
    struct Case { int16_t sample; int32_t row; } cases[] = {
        {32767, 20}, {-32768, 20}, {-32767, 39}, {0, 30}, {16384, 25}};
    for (const auto& c : cases)
        EXPECT_EQ(Column(Draw(8, 60, std::vector<int16_t>(4, c.sample), 1, {0}), 4),
                  W(20) + B(c.row - 20) + "R" + B(39 - c.row) + W(20))
            << c.sample;
    // Channels keep their own bands, and a selection draws one.
    // Left loud and positive, right loud and negative.
    std::vector<int16_t> frames;
    for (int i = 0; i < 20; ++i) frames.insert(frames.end(), {32767, -32767});
    PixelBuffer both = Draw(10, 100, frames, 2, {0, 1});
    EXPECT_EQ(both.PixelAt(5, 20), kRed);
    EXPECT_EQ(both.PixelAt(5, 79), kRed);
    EXPECT_EQ(both.PixelAt(5, 39), kBlue);
    PixelBuffer right = Draw(10, 100, frames, 2, {1});
    // One band of 80 rows: plotting rows 20-79; the right channel sits at its bottom.
    EXPECT_EQ(Column(right, 5), W(20) + B(59) + "R" + W(20));
}

TEST(WaveformDrawing, ShortSoundsArePolylinesThroughTheirSamples) {
    // 4 samples across 8 pixels: a step of 2, sample i at x = 2 (i + 1), from the pen at the
    // first sample's row on the left edge.
    const std::vector<int16_t> samples{0, 32767, -32767, 0};
    PixelBuffer drawn = Draw(8, 60, samples, 1, {0});

    auto expected = PixelBuffer::Make(8, 60);
    expected->SetColor(kBlue);
    expected->FillRect(0, 20, 7, 40);
    expected->SetColor(kRed);
    expected->MoveTo(0, 30);
    const int32_t vertices[][2] = {{2, 30}, {4, 20}, {6, 39}, {8, 30}};
    for (const auto& v : vertices) expected->LineTo(v[0], v[1]);
    for (int32_t x = 0; x < 8; ++x) EXPECT_EQ(Column(drawn, x), Column(*expected, x)) << "column " << x;
}

TEST(WaveformDrawing, LongSoundsAreOneMinMaxStrokePerColumnUpToTheRightEdge) {
    // 5000 samples across 5 pixels: column c holds samples 1000c - 1 to 1000c + 998. Column 1 has a
    // peak, column 2 a trough, column 3 a -32768 (drawn as a peak); every other sample is silence
    // (row 30 of plotting rows 20-39).
    std::vector<int16_t> samples(5000, 0);
    samples[1500] = 32767;
    samples[2500] = -32767;
    samples[3500] = -32768;
    PixelBuffer p = Draw(5, 60, samples, 1, {0});
    EXPECT_EQ(Column(p, 0), W(20) + B(10) + "R" + B(9) + W(20));
    EXPECT_EQ(Column(p, 1), W(20) + std::string(11, 'R') + B(9) + W(20));
    EXPECT_EQ(Column(p, 2), W(20) + B(10) + std::string(10, 'R') + W(20));
    EXPECT_EQ(Column(p, 3), W(20) + std::string(11, 'R') + B(9) + W(20));
    // The last column is still being gathered when the sound ends: only the line into it is drawn
    // (and it has no background: it is outside the stored picture).
    EXPECT_EQ(Column(p, 4).substr(20, 20), W(10) + "R" + W(9));
    // 30 million frames: a single-precision running sum of the step would stall far short of the
    // right edge; every column but the last must hold the curve.
    const int64_t frames = 30'000'000;
    std::vector<int16_t> block(1 << 16, 0);
    auto picture = PixelBuffer::Make(1800, 60);
    WaveformPainter painter(*picture, {0}, 1, frames, WaveformColors{kRed, kBlue});
    for (int64_t first = 0; first < frames; first += int64_t(block.size()))
        painter.Feed(block.data(), std::min<int64_t>(int64_t(block.size()), frames - first));
    for (int32_t x = 0; x < 1799; ++x) ASSERT_EQ(picture->PixelAt(x, 30), kRed) << x;
}

TEST(WaveformDrawing, BlockBoundariesDoNotChangeThePicture) {
    // A stereo chirp long enough for strokes, and one short enough for a polyline.
    for (int64_t frames : {int64_t(50'000), int64_t(150)}) {
        std::vector<int16_t> samples;
        for (int64_t n = 0; n < frames; ++n) {
            samples.push_back(int16_t((n * n / 7) % 60000 - 30000));
            samples.push_back(int16_t((n * 37) % 65536 - 32768));
        }
        PixelBuffer whole = Draw(300, 130, samples, 2, {0, 1}, frames);
        for (int64_t block : {int64_t(1), int64_t(7), int64_t(4096)}) {
            PixelBuffer pieces = Draw(300, 130, samples, 2, {0, 1}, block);
            for (int32_t x = 0; x < 300; ++x) ASSERT_EQ(Column(pieces, x), Column(whole, x)) << frames << "/" << block;
        }
    }
}

}  // namespace
}  // namespace vdtest
