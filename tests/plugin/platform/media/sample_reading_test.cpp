// Reading frame ranges of sound tracks as 16-bit samples and as stored bytes, from every storage
// the layer has: memory, PCM in files of either byte order and width, and decoded compressed sound.
#include "platform/media/movie_from_file.h"
#include "platform/media/new_sound_movie.h"
#include "platform/media/pcm_conversion.h"
#include "platform/media/sample_reading.h"

#include "media_fixtures.h"

#include <limits>

namespace vd::media {
namespace {

using vdtest::media::SineSample;

class MediaSampleReadingTest : public ::testing::Test {
protected:
    vdtest::TempFolder folder;
    std::string Path(const std::string& name) { return (folder / name).string(); }

    // Frames [first, first + count) of the file's first sound track as 16-bit samples.
    std::vector<int16_t> Read(const std::string& file, int64_t first, int64_t count) {
        Movie movie;
        EXPECT_EQ(MovieFromFile(Path(file), movie), util::kNoError) << LastMediaErrorDetail();
        std::vector<int16_t> samples;
        if (const Track* t = movie.FirstSoundTrack()) {
            EXPECT_EQ(ReadFramesInt16(t->media, first, count, samples), util::kNoError);
        }
        return samples;
    }
};

TEST_F(MediaSampleReadingTest, PcmOfEveryLayoutReadsAsTheSameSine) {
    vdtest::writeFile(Path("s16.wav"), vdtest::media::SineWav(44100, 2));
    vdtest::writeFile(Path("s24.wav"), vdtest::media::SineWav(44100, 2, 44100, 24));
    std::vector<std::string> files{"s16.wav", "s24.wav"};
    if (vdtest::media::HaveFfmpeg()) {
        vdtest::media::Ffmpeg({"-i", Path("s16.wav"), "-c:a", "pcm_s16be", Path("be.aiff")});
        vdtest::media::Ffmpeg({"-i", Path("s16.wav"), "-c:a", "pcm_f32be", Path("f32.caf")});
        vdtest::media::Ffmpeg({"-i", Path("s16.wav"), Path("lossless.flac")});
        files.insert(files.end(), {"be.aiff", "f32.caf", "lossless.flac"});
    }
    for (const auto& file : files) {
        SCOPED_TRACE(file);
        // A range that starts mid-file, in both channels (880 Hz on the right).
        auto samples = Read(file, 1000, 300);
        ASSERT_EQ(samples.size(), 600u);
        for (int64_t n = 0; n < 300; ++n) {
            EXPECT_NEAR(samples[size_t(2 * n)], SineSample(1000 + n, 0), 1) << "frame " << 1000 + n;
            EXPECT_NEAR(samples[size_t(2 * n + 1)], SineSample(1000 + n, 1), 1) << "frame " << 1000 + n;
        }
        // Past the end: clipped, not failed.
        EXPECT_EQ(Read(file, 44000, 1000).size(), 200u);
        EXPECT_TRUE(Read(file, 50000, 10).empty());
    }
}

TEST_F(MediaSampleReadingTest, EightBitCentreIsZeroAndStoredBytesStayAsStored) {
    vdtest::writeFile(Path("u8.wav"), vdtest::media::SineWav(22050, 1, 22050, 8));
    auto samples = Read("u8.wav", 0, 100);
    ASSERT_EQ(samples.size(), 100u);
    EXPECT_EQ(samples[0], 0);  // byte 128
    for (int n = 0; n < 100; ++n) EXPECT_EQ(samples[size_t(n)], (SineSample(n, 0, 22050) >> 8) * 256);

    Movie movie;
    ASSERT_EQ(MovieFromFile(Path("u8.wav"), movie), util::kNoError);
    std::vector<uint8_t> bytes;
    ASSERT_EQ(ReadStoredBytes(movie.FirstSoundTrack()->media, 0, 4, bytes), util::kNoError);
    EXPECT_EQ(bytes.size() == 4 ? bytes[0] : 0, 128);
}

TEST_F(MediaSampleReadingTest, StoredBytesKeepTheirByteOrder) {
    VD_REQUIRE_FFMPEG();
    vdtest::writeFile(Path("s16.wav"), vdtest::media::SineWav(4410, 2));
    vdtest::media::Ffmpeg({"-i", Path("s16.wav"), "-c:a", "pcm_s16be", Path("be.aiff")});
    Movie little, big;
    ASSERT_EQ(MovieFromFile(Path("s16.wav"), little), util::kNoError);
    ASSERT_EQ(MovieFromFile(Path("be.aiff"), big), util::kNoError);
    std::vector<uint8_t> le, be;
    ASSERT_EQ(ReadStoredBytes(little.FirstSoundTrack()->media, 10, 20, le), util::kNoError);
    ASSERT_EQ(ReadStoredBytes(big.FirstSoundTrack()->media, 10, 20, be), util::kNoError);
    ASSERT_EQ(le.size(), 80u);
    ASSERT_EQ(be.size(), 80u);
    for (size_t i = 0; i < le.size(); i += 2) std::swap(be[i], be[i + 1]);
    EXPECT_EQ(le, be);
    EXPECT_EQ(int16_t(le[0] | le[1] << 8), SineSample(10, 0));
}

TEST_F(MediaSampleReadingTest, CompressedSoundDecodesNearTheSineAndHasNoStoredBytes) {
    VD_REQUIRE_FFMPEG();
    vdtest::writeFile(Path("s16.wav"), vdtest::media::SineWav(44100, 2));
    vdtest::media::Ffmpeg({"-i", Path("s16.wav"), "-c:a", "libmp3lame", "-b:a", "192k", Path("tone.mp3")});
    Movie movie;
    ASSERT_EQ(MovieFromFile(Path("tone.mp3"), movie), util::kNoError);
    const Media& media = movie.FirstSoundTrack()->media;
    std::vector<int16_t> samples;
    ASSERT_EQ(ReadFramesInt16(media, 0, media.Duration(), samples), util::kNoError);
    EXPECT_NEAR(double(samples.size()) / 2, 44100.0, 1200.0);
    // The level of the left channel over the middle: a 10000-amplitude sine has RMS 7071.
    double sum = 0;
    for (size_t n = 10000; n < 30000; ++n) sum += double(samples[2 * n]) * samples[2 * n];
    EXPECT_NEAR(std::sqrt(sum / 20000), 7071.0, 300.0);
    std::vector<uint8_t> bytes;
    EXPECT_EQ(ReadStoredBytes(media, 0, 10, bytes), util::kCorruptData);
    // Reading backwards restarts the decoder and gives the same samples again.
    std::vector<int16_t> again;
    ASSERT_EQ(ReadFramesInt16(media, 20000, 100, again), util::kNoError);
    EXPECT_EQ(again, std::vector<int16_t>(samples.begin() + 40000, samples.begin() + 40200));
}

TEST_F(MediaSampleReadingTest, AbsurdRangesAnswerStatusesBeforeAnyAllocation) {
    Movie movie;
    ASSERT_EQ(NewEmptySoundMovie(movie), util::kNoError);
    const Media& media = movie.FirstSoundTrack()->media;
    std::vector<int16_t> samples;
    EXPECT_EQ(ReadFramesInt16(media, -1, 1, samples), util::kInvalidTime);
    EXPECT_EQ(ReadFramesInt16(media, 0, -5, samples), util::kInvalidTime);
    EXPECT_EQ(ReadFramesInt16(media, 0, INT64_MAX, samples), util::kNoError);  // clipped to the one frame
    EXPECT_EQ(samples, std::vector<int16_t>(2, 0));

    // A media that claims more frames than one read may hold.
    Movie huge;
    ASSERT_EQ(NewMemorySoundMovie(44100, huge), util::kNoError);
    Media& big = huge.TrackAt(0).media;
    auto store = std::make_shared<MemorySampleStore>();
    ASSERT_EQ(big.AppendRun(SampleRun{store, 0, int64_t(1) << 40, 1}, PcmSoundDescription(kFormatSowt, 2, 16, 44100)),
              util::kNoError);
    EXPECT_EQ(ReadFramesInt16(big, 0, int64_t(1) << 40, samples), util::kMemoryFull);
    std::vector<uint8_t> bytes;
    EXPECT_EQ(ReadStoredBytes(big, 0, int64_t(1) << 40, bytes), util::kMemoryFull);
}

// The block conversion takes a faster road than the one-sample rule; both must agree on every
// value, the awkward ones most of all.
TEST(FloatToInt16Test, BlockConversionAgreesWithTheOneSampleRule) {
    std::vector<float> values{0.0f, -0.0f, 0.5f / 32768, 1.5f / 32768, 2.5f / 32768, -0.5f / 32768, -1.5f / 32768,
                              1.0f, -1.0f, 32766.5f / 32768, 32767.4f / 32768, -32767.5f / 32768, 1e9f, -1e9f,
                              std::numeric_limits<float>::infinity(), -std::numeric_limits<float>::infinity(),
                              std::numeric_limits<float>::quiet_NaN(), 0.25f, -0.75f};
    for (int i = -40000; i <= 40000; i += 37) values.push_back(float(i) / 32768.0f + 0.3f / 32768.0f);
    std::vector<int16_t> block(values.size());
    FloatsToInt16(values.data(), values.size(), block.data());
    for (size_t i = 0; i < values.size(); ++i) ASSERT_EQ(block[i], FloatToInt16(values[i])) << values[i];
    EXPECT_EQ(FloatToInt16(1.5f / 32768), 2);   // ties go to even
    EXPECT_EQ(FloatToInt16(2.5f / 32768), 2);
    EXPECT_EQ(FloatToInt16(std::numeric_limits<float>::quiet_NaN()), 0);  // silence
    EXPECT_EQ(FloatToInt16(1e9f), 32767);
}

}  // namespace
}  // namespace vd::media
