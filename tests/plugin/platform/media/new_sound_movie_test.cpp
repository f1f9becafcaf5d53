// Movies made in memory: the empty sound movie and one filled block by block, as synthesis does.
#include "platform/media/new_sound_movie.h"
#include "platform/media/sample_reading.h"

#include <gtest/gtest.h>

namespace vd::media {
namespace {

TEST(NewSoundMovie, EmptyMovieHasOneSilentCdQualityFrame) {
    Movie movie;
    ASSERT_EQ(NewEmptySoundMovie(movie), util::kNoError);
    EXPECT_EQ(movie.timeScale, 600);
    ASSERT_EQ(movie.TrackCount(), 1u);
    const Track& track = movie.TrackAt(0);
    EXPECT_EQ(track.media.timeScale, 44100);
    EXPECT_EQ(track.media.Duration(), 1);
    const SampleDescription& d = track.media.Descriptions().at(0);
    EXPECT_EQ(d, PcmSoundDescription(kFormatSowt, 2, 16, 44100));
    std::string path;
    EXPECT_EQ(movie.FilePath(path), util::kFeatureUnsupported);
    FourCharCode subtype;
    EXPECT_EQ(movie.SourceFormat(subtype), util::kFeatureUnsupported);
}

TEST(NewSoundMovie, BlocksAppendedInMemoryReadBackInOrder) {
    Movie movie;
    ASSERT_EQ(NewMemorySoundMovie(22050, movie), util::kNoError);
    Track& track = movie.TrackAt(0);
    const auto twos = PcmSoundDescription(kFormatTwos, 1, 16, 22050);
    const uint8_t first[] = {0x01, 0x00, 0xFF, 0xFF};  // 256, -1 big-endian
    const uint8_t second[] = {0x80, 0x00};             // -32768
    ASSERT_EQ(track.media.AppendSamples(twos, first, sizeof first, 2), util::kNoError);
    ASSERT_EQ(track.media.AppendSamples(twos, second, sizeof second, 1), util::kNoError);
    EXPECT_EQ(track.media.Runs().size(), 1u);  // one growing block
    EXPECT_EQ(track.Duration(600), 0);         // not yet inserted
    track.InsertMedia(0);
    EXPECT_EQ(track.media.Duration(), 3);
    std::vector<int16_t> samples;
    ASSERT_EQ(ReadFramesInt16(track.media, 0, 3, samples), util::kNoError);
    EXPECT_EQ(samples, (std::vector<int16_t>{256, -1, -32768}));

    // Another layout of the same timing joins as a second description.
    const uint8_t eight[] = {0};  // raw 0 = -128 << 8
    ASSERT_EQ(track.media.AppendSamples(PcmSoundDescription(kFormatRaw, 1, 8, 22050), eight, 1, 1), util::kNoError);
    EXPECT_EQ(track.media.Descriptions().size(), 2u);
    ASSERT_EQ(ReadFramesInt16(track.media, 3, 1, samples), util::kNoError);
    EXPECT_EQ(samples, std::vector<int16_t>{-32768});
    std::vector<uint8_t> bytes;
    EXPECT_EQ(ReadStoredBytes(track.media, 0, 4, bytes), util::kCorruptData);

    // Blocks that disagree with the media's timing, size or PCM-ness are refused.
    EXPECT_EQ(track.media.AppendSamples(PcmSoundDescription(kFormatTwos, 2, 16, 22050), first, 4, 1), util::kCorruptData);
    EXPECT_EQ(track.media.AppendSamples(twos, first, 3, 2), util::kBadParameter);
    SampleDescription compressed = twos;
    compressed.dataFormat = FourCC(".mp3");
    EXPECT_EQ(track.media.AppendSamples(compressed, first, 4, 2), util::kCorruptData);
}

TEST(MovieTime, ConvertsBetweenScalesToTheNearestUnit) {
    EXPECT_EQ(ConvertTimeScale(1, 600, 44100), 74);       // 73.5 rounds up
    EXPECT_EQ(ConvertTimeScale(0x18000, 65536, 44100), 66150);  // 1.5 s in 16.16
    EXPECT_EQ(ConvertTimeScale(INT64_MAX, 1, 44100), INT64_MAX);
    Movie movie;
    ASSERT_EQ(NewEmptySoundMovie(movie), util::kNoError);
    Track& track = movie.TrackAt(0);
    track.InsertMedia(600);
    EXPECT_EQ(track.MediaTimeFromMovieTime(1200, 600), 44100);
    EXPECT_EQ(track.MovieTimeFromMediaTime(44100, 600), 1200);
}

}  // namespace
}  // namespace vd::media
