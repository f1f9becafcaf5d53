// Copying and appending selections: lengths to the frame and the samples they carry.
#include "platform/media/movie_from_file.h"
#include "platform/media/new_sound_movie.h"
#include "platform/media/sample_reading.h"
#include "platform/media/selection.h"

#include "media_fixtures.h"

namespace vd::media {
namespace {

using vdtest::media::SineSample;

class MediaSelectionTest : public ::testing::Test {
protected:
    void SetUp() override {
        vdtest::writeFile(folder / "a.wav", vdtest::media::SineWav(44100, 2));
        ASSERT_EQ(MovieFromFile((folder / "a.wav").string(), sound), util::kNoError);
    }
    static std::vector<int16_t> All(const Track& track) {
        std::vector<int16_t> samples;
        EXPECT_EQ(ReadFramesInt16(track.media, 0, track.media.Duration(), samples), util::kNoError);
        return samples;
    }
    vdtest::TempFolder folder;
    Movie sound;
};

TEST_F(MediaSelectionTest, CopyTakesTheRangeToTheFrameWithoutCopyingSamples) {
    Movie part;
    // 0.25 s to 0.75 s, given as 16.16 seconds.
    ASSERT_EQ(CopyMovieSelection(sound, {0x4000, 0x8000, kSecondsFixedScale}, part), util::kNoError);
    const Track& track = *part.FirstSoundTrack();
    EXPECT_EQ(track.media.Duration(), 22050);
    EXPECT_EQ(part.Duration(), 300);
    auto samples = All(track);
    ASSERT_EQ(samples.size(), 44100u);
    EXPECT_EQ(samples[0], SineSample(11025, 0));
    EXPECT_EQ(samples[44099], SineSample(33074, 1));
    // The copy reads the same file region: still PCM bytes, still in the file.
    EXPECT_EQ(track.media.Runs().at(0).store, sound.FirstSoundTrack()->media.Runs().at(0).store);
    std::string path;
    ASSERT_EQ(part.FilePath(path), util::kNoError);
    EXPECT_EQ(path, (folder / "a.wav").string());

    // Ranges past the end are clipped; a range from the end is empty; negative ones fail.
    ASSERT_EQ(CopyMovieSelection(sound, {300, 100000, 0}, part), util::kNoError);
    EXPECT_EQ(part.FirstSoundTrack()->media.Duration(), 22050);
    ASSERT_EQ(CopyMovieSelection(sound, {600, 600, 0}, part), util::kNoError);
    EXPECT_EQ(part.FirstSoundTrack()->media.Duration(), 0);
    EXPECT_EQ(CopyMovieSelection(sound, {-1, 600, 0}, part), util::kInvalidTime);
    EXPECT_EQ(CopyMovieSelection(sound, {0, -1, 0}, part), util::kInvalidTime);
}

TEST_F(MediaSelectionTest, AppendingAnotherFormatAddsATrackAtTheEnd) {
    Movie mono;
    ASSERT_EQ(NewMemorySoundMovie(22050, mono), util::kNoError);
    std::vector<uint8_t> bytes(2 * 11025, 0x10);
    ASSERT_EQ(mono.TrackAt(0).media.AppendSamples(PcmSoundDescription(kFormatSowt, 1, 16, 22050), bytes.data(),
                                                  bytes.size(), 11025),
              util::kNoError);
    mono.TrackAt(0).InsertMedia(0);
    Movie joined;
    ASSERT_EQ(CopyMovieSelection(sound, {0, sound.Duration(), 0}, joined), util::kNoError);
    ASSERT_EQ(AddMovieSelection(joined, mono, {0, mono.Duration(), 0}), util::kNoError);
    ASSERT_EQ(joined.TrackCount(), 2u);
    EXPECT_EQ(joined.TrackAt(1).MovieOffset(), 600);
    EXPECT_EQ(joined.Duration(), 900);
    // The original movie is unchanged by being appended.
    EXPECT_EQ(mono.TrackAt(0).media.Duration(), 11025);
}

}  // namespace
}  // namespace vd::media
