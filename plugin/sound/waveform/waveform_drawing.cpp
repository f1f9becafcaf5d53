#include "sound/waveform/waveform_drawing.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <utility>

namespace vd::sound {

namespace {

// Below half a pixel a sample, several samples share each column and are drawn as its extremes.
constexpr float kStrokeStep = 0.5f;

int16_t NegatedKey(int16_t sample) { return static_cast<int16_t>(-sample); }

// Eight samples at once: the interleaved frames are read sixteen bytes at a time, and lane j of
// every block holds channel j % channels whenever channels divides 8, so lane-wise extremes are
// channel-wise extremes.
using Lanes = int16_t __attribute__((vector_size(16)));
using UnsignedLanes = uint16_t __attribute__((vector_size(16)));
constexpr int kLanes = 8;

// The smallest and largest negated sample of every channel over count frames; low and high hold
// the extremes so far and are updated.
void ChannelExtremes(const int16_t* frames, int64_t count, int32_t channels, int16_t* low, int16_t* high) {
    int64_t done = 0;
    if (channels <= kLanes && kLanes % channels == 0) {
        const int64_t framesPerBlock = kLanes / channels;
        const int64_t blocks = count / framesPerBlock;
        if (blocks > 0) {
            Lanes lo, hi;
            for (int j = 0; j < kLanes; ++j) lo[j] = low[j % channels], hi[j] = high[j % channels];
            const auto* bytes = reinterpret_cast<const unsigned char*>(frames);
            for (int64_t b = 0; b < blocks; ++b) {
                UnsignedLanes v;
                std::memcpy(&v, bytes + b * 16, 16);
                const auto key = reinterpret_cast<Lanes>(-v);  // negation with wrap-around, as NegatedKey
                lo = key < lo ? key : lo;
                hi = key > hi ? key : hi;
            }
            for (int j = 0; j < kLanes; ++j) {
                low[j % channels] = std::min(low[j % channels], int16_t(lo[j]));
                high[j % channels] = std::max(high[j % channels], int16_t(hi[j]));
            }
            done = blocks * framesPerBlock;
        }
    }
    for (int64_t n = done; n < count; ++n)
        for (int32_t c = 0; c < channels; ++c) {
            const int16_t key = NegatedKey(frames[n * channels + c]);
            low[c] = std::min(low[c], key), high[c] = std::max(high[c], key);
        }
}

}  // namespace

// Sample i (from 0) is plotted at x = (i + 1) p. The position is computed from i, not summed: a
// single-precision sum stops growing once its step falls below half its precision (after a few
// million samples), which would leave the end of a long sound off the picture.
WaveformPainter::WaveformPainter(platform::PixelBuffer& picture, std::vector<int32_t> drawn, int32_t sourceChannels,
                                 int64_t totalFrames, WaveformColors colors)
    : picture_(picture), sourceChannels_(sourceChannels), totalFrames_(totalFrames), colors_(colors) {
    const WaveformBands layout(picture.Height(), int32_t(drawn.size()));
    for (size_t k = 0; k < drawn.size(); ++k)
        bands_.push_back({drawn[k], layout.PlotTop(int32_t(k)), layout.PlotHeight()});
    step_ = totalFrames > 0 ? float(picture.Width()) / float(totalFrames) : std::numeric_limits<float>::infinity();
    // Every band's plotting area gets the background even when there is no sample to draw; the
    // last column stays out of the fill, as it stays out of the stored picture.
    picture_.SetColor(colors_.background);
    for (size_t k = 0; k < bands_.size(); ++k)
        picture_.FillRect(0, bands_[k].top, picture.Width() - 1, layout.End(int32_t(k)));
    picture_.SetColor(colors_.wave);
    nextColumnFrame_ = FirstFrameOfColumn(1);
    low_.assign(size_t(std::max(sourceChannels, 1)), 0);
    high_.assign(size_t(std::max(sourceChannels, 1)), 0);
}

int64_t WaveformPainter::FirstFrameOfColumn(int64_t column) const {
    // The smallest i with (i + 1) p >= column, found from an estimate and settled with the same
    // product the columns are measured by.
    const double p = step_;
    auto reaches = [&](int64_t i) { return double(i + 1) * p >= double(column); };
    int64_t i = std::max<int64_t>(0, int64_t(std::ceil(double(column) / p)) - 1);
    while (i > 0 && reaches(i - 1)) --i;
    while (!reaches(i)) ++i;
    return i;
}

void WaveformPainter::LineTo(Band& band, int32_t x, int32_t y) {
    picture_.MoveTo(band.penX, band.penY);
    picture_.LineTo(x, y);
    band.penX = x, band.penY = y;
}

void WaveformPainter::Start(const int16_t* firstFrame) {
    for (Band& band : bands_) {
        const int16_t sample = firstFrame[band.channel];
        band.penX = 0;
        band.penY = SampleRow(sample, band.top, band.plotHeight);
        band.lowKey = band.highKey = NegatedKey(sample);
    }
}

void WaveformPainter::Feed(const int16_t* frames, int64_t frameCount) {
    frameCount = std::min(frameCount, totalFrames_ - fed_);
    if (frameCount <= 0 || bands_.empty()) return;
    if (fed_ == 0) Start(frames);
    if (step_ < kStrokeStep) FeedColumns(frames, frameCount);
    else FeedPolyline(frames, frameCount);
}

void WaveformPainter::FeedPolyline(const int16_t* frames, int64_t count) {
    for (int64_t n = 0; n < count; ++n, ++fed_) {
        const auto x = int32_t(std::min<double>(double(fed_ + 1) * double(step_), std::numeric_limits<int32_t>::max()));
        const int16_t* frame = frames + n * sourceChannels_;
        for (Band& band : bands_) LineTo(band, x, SampleRow(frame[band.channel], band.top, band.plotHeight));
    }
}

// The column just finished: a line from where the pen is to the first sample of the next column,
// then the column's stroke from its highest to its lowest row.
void WaveformPainter::CloseColumn(Band& band, int32_t column, int32_t nextRow) {
    LineTo(band, column + 1, nextRow);
    band.penX = column, band.penY = SampleRow(NegatedKey(band.lowKey), band.top, band.plotHeight);
    LineTo(band, column, SampleRow(NegatedKey(band.highKey), band.top, band.plotHeight));
}

void WaveformPainter::FeedColumns(const int16_t* frames, int64_t count) {
    // Rows grow with the negated sample, so a column's extremes are found on the negated values
    // and turned into rows once per column.
    const int64_t end = fed_ + count;
    const int16_t* frame = frames;
    while (fed_ < end) {
        const int64_t stop = std::min(end, nextColumnFrame_);
        const int64_t run = stop - fed_;
        if (run > 0) {
            for (const Band& band : bands_) {
                low_[size_t(band.channel)] = band.lowKey;
                high_[size_t(band.channel)] = band.highKey;
            }
            ChannelExtremes(frame, run, sourceChannels_, low_.data(), high_.data());
            for (Band& band : bands_) {
                band.lowKey = low_[size_t(band.channel)];
                band.highKey = high_[size_t(band.channel)];
                // Within a column the pen follows the samples; only the last one matters.
                band.penX = column_;
                band.penY = SampleRow(frame[(run - 1) * sourceChannels_ + band.channel], band.top, band.plotHeight);
            }
            frame += run * sourceChannels_;
            fed_ = stop;
        }
        if (fed_ == nextColumnFrame_ && fed_ < end) {
            for (Band& band : bands_) {
                const int16_t sample = frame[band.channel];
                CloseColumn(band, column_, SampleRow(sample, band.top, band.plotHeight));
                band.lowKey = band.highKey = NegatedKey(sample);
            }
            // This sample opens the next column; the pen stays at the stroke's end until the
            // column's next sample moves it.
            frame += sourceChannels_;
            ++fed_;
            ++column_;
            nextColumnFrame_ = FirstFrameOfColumn(int64_t(column_) + 1);
        }
    }
}

}  // namespace vd::sound
