// Drawing a sound's samples into a picture: one horizontal band per drawn channel, each with a
// 20-pixel margin above its plotting area, samples left to right across the full width. Long
// sounds become one vertical min-max stroke per pixel column, short ones a polyline through the
// samples. The samples arrive in blocks, so a sound of any length is drawn without holding it.
#pragma once

#include "platform/graphics/pixel_buffer.h"

#include <cstdint>
#include <vector>

namespace vd::sound {

// The picture's layout for H pixels of height and C bands: band k spans rows [k b, (k + 1) b) with
// b = (H - 20) / C; its top 20 rows are margin and the rest, from k b + 20 on, is where samples are
// plotted. What lies below the last band is margin as well.
struct WaveformBands {
    static constexpr int32_t kMargin = 20;

    WaveformBands(int32_t height, int32_t bands) : bandHeight((height - kMargin) / bands) {}

    int32_t bandHeight;
    int32_t PlotTop(int32_t band) const { return band * bandHeight + kMargin; }
    int32_t PlotHeight() const { return bandHeight - kMargin; }
    int32_t End(int32_t band) const { return (band + 1) * bandHeight; }
    // Each band needs a row to plot in. (The bands were never checked before; a height that leaves
    // none is refused now instead of drawing a picture of margins.)
    bool Fit() const { return PlotHeight() >= 1; }
};

// The row of a sample in a plotting area: the sample negated in 16 bits (so positive samples rise
// and -32768, which has no positive twin, stays itself and lands at the top with +32767), shifted
// from -32768..32767 to 0..65535 and scaled to the area's height.
inline int32_t SampleRow(int16_t sample, int32_t top, int32_t plotHeight) {
    const auto negated = static_cast<int16_t>(-sample);
    return top + (((int32_t(negated) + 32768) * plotHeight) >> 16);
}

struct WaveformColors {
    // Black on white: the margins keep the picture's own white, so by default the picture reads
    // as one sheet with the curve drawn on it.
    platform::Rgba wave{0, 0, 0, 255};
    platform::Rgba background{255, 255, 255, 255};
};

class WaveformPainter {
public:
    // Band k shows channel drawn[k] of frames with sourceChannels interleaved samples; totalFrames
    // is the sound's length in frames (the horizontal step is width / totalFrames pixels a sample,
    // in single precision). The bands must fit (WaveformBands::Fit) and every drawn channel exist.
    WaveformPainter(platform::PixelBuffer& picture, std::vector<int32_t> drawn, int32_t sourceChannels,
                    int64_t totalFrames, WaveformColors colors);

    // The next frames of the sound, in order; frames beyond totalFrames are ignored.
    void Feed(const int16_t* frames, int64_t frameCount);

private:
    struct Band {
        int32_t channel, top, plotHeight;
        int32_t penX = 0, penY = 0;      // each band draws with a pen of its own
        int16_t lowKey = 0, highKey = 0; // the column's extreme negated samples
    };

    void Start(const int16_t* firstFrame);
    void FeedPolyline(const int16_t* frames, int64_t count);
    void FeedColumns(const int16_t* frames, int64_t count);
    void CloseColumn(Band& band, int32_t column, int32_t nextRow);
    void LineTo(Band& band, int32_t x, int32_t y);
    int64_t FirstFrameOfColumn(int64_t column) const;

    platform::PixelBuffer& picture_;
    std::vector<Band> bands_;
    int32_t sourceChannels_;
    int64_t totalFrames_;
    WaveformColors colors_;
    float step_;                   // pixels a sample
    int64_t fed_ = 0;              // frames seen so far
    int32_t column_ = 0;           // the column being gathered (strokes)
    int64_t nextColumnFrame_ = 0;  // the first frame of the next column (strokes)
    std::vector<int16_t> low_, high_;  // every source channel's column extremes, for the sweep
};

}  // namespace vd::sound
