// Float samples that are not numbers (a damaged or hostile float file) become silence on every way
// to 16 bits: one at a time, in blocks (the vector path takes 8 at a time, the rest one by one), from
// stored float bytes, and through a render that resamples them.
#include "platform/media/movie_from_file.h"
#include "platform/media/new_sound_movie.h"
#include "platform/media/pcm_conversion.h"
#include "platform/media/render.h"
#include "platform/media/sample_reading.h"

#include "media_fixtures.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <tuple>

namespace vd::media {
namespace {

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

TEST(PcmConversionTest, NotANumberIsSilenceNotFullScale) {
    EXPECT_EQ(FloatToInt16(-kNaN), 0);
    // 11 samples: eight through the vector path, three after it.
    const float in[11] = {kNaN, 0.5f, -kNaN, -1.5f, kNaN, 0.25f, kNaN, 1.0f, kNaN, -0.5f, kNaN};
    int16_t out[11];
    FloatsToInt16(in, 11, out);
    const int16_t expected[11] = {0, 16384, 0, -32768, 0, 8192, 0, 32767, 0, -16384, 0};
    EXPECT_TRUE(std::equal(out, out + 11, expected));

    // Stored float bytes, both widths, read as integers and as floats.
    std::vector<uint8_t> bytes32(8), bytes64(16);
    const float f32[2] = {kNaN, 0.5f};
    const double f64[2] = {std::numeric_limits<double>::quiet_NaN(), 0.5};
    std::memcpy(bytes32.data(), f32, 8);
    std::memcpy(bytes64.data(), f64, 16);
    int16_t ints[2];
    float floats[2];
    for (const auto& [format, bits, bytes] : {std::tuple{kFormatFloat32, 32, &bytes32}, {kFormatFloat64, 64, &bytes64}}) {
        const SampleDescription d = PcmSoundDescription(format, 1, bits, 44100);
        PcmToInt16(d, bytes->data(), 2, ints);
        EXPECT_EQ(std::vector<int16_t>(ints, ints + 2), (std::vector<int16_t>{0, 16384})) << bits;
        PcmToFloat(d, bytes->data(), 2, floats);
        EXPECT_EQ(std::vector<float>(floats, floats + 2), (std::vector<float>{0.0f, 0.5f})) << bits;
    }
}

TEST(PcmConversionTest, ResampledNotANumbersLeaveTheirNeighboursSilentToo) {
    // Silence with NaN here and there at 48 kHz: the resampler would spread each over many frames.
    std::vector<float> samples(4800, 0.0f);
    for (size_t i = 100; i < samples.size(); i += 997) samples[i] = kNaN;
    Movie movie;
    ASSERT_EQ(NewMemorySoundMovie(48000, movie), util::kNoError);
    ASSERT_EQ(movie.TrackAt(0).media.AppendSamples(PcmSoundDescription(kFormatFloat32, 1, 32, 48000),
                                                   reinterpret_cast<const uint8_t*>(samples.data()),
                                                   samples.size() * sizeof(float), int64_t(samples.size())),
              util::kNoError);
    movie.TrackAt(0).InsertMedia(0);
    vdtest::TempFolder folder;
    const std::string target = (folder / "out.wav").string();
    ASSERT_EQ(RenderMovie(movie, target), util::kNoError);
    Movie rendered;
    ASSERT_EQ(MovieFromFile(target, rendered), util::kNoError);
    std::vector<int16_t> out;
    ASSERT_EQ(ReadFramesInt16(rendered.FirstSoundTrack()->media, 0, 1 << 20, out), util::kNoError);
    ASSERT_EQ(out.size(), 2u * 4410);
    EXPECT_EQ(std::count(out.begin(), out.end(), 0), std::ptrdiff_t(out.size()));
}

}  // namespace
}  // namespace vd::media
