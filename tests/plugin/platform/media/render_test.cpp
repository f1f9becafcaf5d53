// Rendering movies to WAV: the header, the samples, mixing with volumes, resampling,
// the byte-exact copy path, and what a failure leaves behind (nothing).
#include "platform/media/movie_from_file.h"
#include "platform/media/new_sound_movie.h"
#include "platform/media/render.h"
#include "platform/media/sample_reading.h"
#include "platform/media/selection.h"

#include "media_fixtures.h"

namespace vd::media {
namespace {

using vdtest::media::Le16;
using vdtest::media::SineSample;

// A memory movie with one track of constant 16-bit samples.
Movie ConstantMovie(int rate, int channels, int16_t value, int64_t frames) {
    Movie movie;
    EXPECT_EQ(NewMemorySoundMovie(rate, movie), util::kNoError);
    std::vector<uint8_t> bytes;
    for (int64_t i = 0; i < frames * channels; ++i) bytes.insert(bytes.end(), {uint8_t(value), uint8_t(value >> 8)});
    EXPECT_EQ(movie.TrackAt(0).media.AppendSamples(PcmSoundDescription(kFormatSowt, channels, 16, rate), bytes.data(),
                                                   bytes.size(), frames),
              util::kNoError);
    movie.TrackAt(0).InsertMedia(0);
    return movie;
}

class MediaRenderTest : public ::testing::Test {
protected:
    std::string Path(const std::string& name) { return (folder / name).string(); }
    // The bytes of the movie rendered to a WAV file of that name; "" when it fails.
    std::string Rendered(const Movie& movie, const std::string& name, const RenderOptions& options = {}) {
        const Status status = RenderMovie(movie, Path(name), CdQualityWav(), options);
        EXPECT_EQ(status, util::kNoError) << LastMediaErrorDetail();
        return status == util::kNoError ? vdtest::readFile(Path(name)) : "";
    }
    vdtest::TempFolder folder;
};

TEST_F(MediaRenderTest, WritesACdQualityWavWithCorrectHeaderAndSamples) {
    Movie movie;
    ASSERT_EQ(NewMemorySoundMovie(44100, movie), util::kNoError);
    std::vector<uint8_t> bytes = [] {
        std::string wav = vdtest::media::SineWav(1000, 2);
        return std::vector<uint8_t>(wav.begin() + 44, wav.end());
    }();
    // 'twos' in memory (not the copy path): byte-swap the sine.
    for (size_t i = 0; i < bytes.size(); i += 2) std::swap(bytes[i], bytes[i + 1]);
    ASSERT_EQ(movie.TrackAt(0).media.AppendSamples(PcmSoundDescription(kFormatTwos, 2, 16, 44100), bytes.data(),
                                                   bytes.size(), 1000),
              util::kNoError);
    movie.TrackAt(0).InsertMedia(0);
    const std::string wav = Rendered(movie, "out.wav");
    ASSERT_EQ(wav.size(), 44u + 4000);
    // The canonical 44-byte header: PCM, 2 channels, 44100 Hz, 176400 bytes/s, 4-byte frames, 16 bits.
    EXPECT_EQ(wav.substr(0, 44), vdtest::media::PcmWav(std::string(4000, '\0'), 2, 44100, 16).substr(0, 44));
    for (int n = 0; n < 1000; n += 37) {
        EXPECT_EQ(Le16(wav, 44 + 4 * size_t(n)), SineSample(n, 0));
        EXPECT_EQ(Le16(wav, 46 + 4 * size_t(n)), SineSample(n, 1));
    }
    // And the result opens as the 'sowt' sound it claims to be.
    Movie reopened;
    ASSERT_EQ(MovieFromFile(Path("out.wav"), reopened), util::kNoError);
    EXPECT_TRUE(IsCdQualitySowt(reopened.FirstSoundTrack()->media.Descriptions()[0]));
    EXPECT_EQ(reopened.FirstSoundTrack()->media.Duration(), 1000);
}

TEST_F(MediaRenderTest, CopyPathIsByteIdenticalFromFileAndFromSelections) {
    const std::string source = vdtest::media::SineWav(100000, 2);
    vdtest::writeFile(Path("in.wav"), source);
    Movie movie;
    ASSERT_EQ(MovieFromFile(Path("in.wav"), movie), util::kNoError);
    EXPECT_EQ(Rendered(movie, "copy.wav"), source);

    // Second half then first half: two runs over one file.
    Movie swapped;
    ASSERT_EQ(CopyMovieSelection(movie, {50000, 50000, 44100}, swapped), util::kNoError);
    ASSERT_EQ(AddMovieSelection(swapped, movie, {0, 50000, 44100}), util::kNoError);
    const std::string out = Rendered(swapped, "swapped.wav");
    ASSERT_EQ(out.size(), source.size());
    EXPECT_EQ(out.substr(44, 200000), source.substr(44 + 200000));
    EXPECT_EQ(out.substr(44 + 200000), source.substr(44, 200000));
}

TEST_F(MediaRenderTest, TracksMixByVolumeAndClip) {
    Movie movie = ConstantMovie(44100, 2, 8000, 1000);
    Movie other = ConstantMovie(44100, 2, 4000, 500);
    // Put the second sound beside the first, at time 0, at half volume.
    Track& added = movie.AddTrack(Characteristic::kAudio, other.TrackAt(0).media);
    added.volume = 128;
    added.InsertMedia(0);
    std::string wav = Rendered(movie, "mix.wav");
    ASSERT_EQ(wav.size(), 44u + 4000);
    EXPECT_EQ(Le16(wav, 44), 10000);              // 8000 + 4000 / 2
    EXPECT_EQ(Le16(wav, 44 + 4 * 600), 8000);     // after the shorter track ends

    movie.TrackAt(0).volume = 1024;               // 4 × 8000 clips
    EXPECT_EQ(Rendered(movie, "loud.wav").substr(44, 2), "\xFF\x7F");  // 32767
    movie.TrackAt(0).enabled = false;
    wav = Rendered(movie, "quiet.wav");
    EXPECT_EQ(wav.size(), 44u + 4000);            // the disabled track still lasts
    EXPECT_EQ(Le16(wav, 44), 2000);
    EXPECT_EQ(Le16(wav, 44 + 4 * 600), 0);
}

TEST_F(MediaRenderTest, HalfRateMonoBecomesTwiceAsManyStereoFrames) {
    vdtest::writeFile(Path("mono.wav"), vdtest::media::SineWav(22050, 1, 22050));
    Movie movie;
    ASSERT_EQ(MovieFromFile(Path("mono.wav"), movie), util::kNoError);
    ASSERT_EQ(RenderMovie(movie, Path("up.wav")), util::kNoError);
    Movie up;
    ASSERT_EQ(MovieFromFile(Path("up.wav"), up), util::kNoError);
    const Media& media = up.FirstSoundTrack()->media;
    EXPECT_EQ(media.Duration(), 44100);
    std::vector<int16_t> samples;
    ASSERT_EQ(ReadFramesInt16(media, 0, media.Duration(), samples), util::kNoError);
    // Full level in both channels (a 440 Hz sine at 22050 Hz, read at 44100 Hz).
    for (int64_t n = 1000; n < 1100; ++n) {
        EXPECT_NEAR(samples[size_t(2 * n)], SineSample(n, 0, 44100), 60);
        EXPECT_EQ(samples[size_t(2 * n)], samples[size_t(2 * n + 1)]);
    }
}

TEST_F(MediaRenderTest, FailuresLeaveNothingBehindAndNoDescriptorOpen) {
    const int descriptors = vdtest::media::OpenDescriptors();
    vdtest::writeFile(Path("in.wav"), vdtest::media::SineWav(44100, 2));
    {
        Movie movie;
        ASSERT_EQ(MovieFromFile(Path("in.wav"), movie), util::kNoError);
        std::vector<int16_t> samples;
        ASSERT_EQ(ReadFramesInt16(movie.FirstSoundTrack()->media, 0, 44100, samples), util::kNoError);
        ASSERT_EQ(RenderMovie(movie, Path("ok.wav")), util::kNoError);

        // The sound's file vanishes from under it: the render fails and leaves no file.
        std::filesystem::resize_file(Path("in.wav"), 100);
        auto before = vdtest::media::FolderEntries(folder.path());
        EXPECT_NE(RenderMovie(movie, Path("failed.wav")), util::kNoError);
        EXPECT_EQ(vdtest::media::FolderEntries(folder.path()), before);
        EXPECT_FALSE(std::filesystem::exists(Path("failed.wav")));

        // A target whose folder is missing, a folder as target, an unknown format.
        EXPECT_EQ(RenderMovie(movie, Path("no/such/folder/x.wav")), util::kFileNotFound);
        EXPECT_EQ(RenderMovie(movie, folder.path().string()), util::kNotAFile);
        OutputFormat mp3;
        mp3.fileType = FourCC("MP3 ");
        EXPECT_EQ(RenderMovie(movie, Path("x.mp3"), mp3), util::kNoComponent);
        EXPECT_EQ(vdtest::media::FolderEntries(folder.path()), before);
    }
    Movie noSound;
    EXPECT_EQ(RenderMovie(noSound, Path("none.wav")), util::kNoSoundTrack);
    if (vdtest::media::HaveFfmpeg()) {
        vdtest::media::Ffmpeg({"-i", Path("ok.wav"), Path("in.mp3")});
        Movie mp3;
        ASSERT_EQ(MovieFromFile(Path("in.mp3"), mp3), util::kNoError);
        ASSERT_EQ(RenderMovie(mp3, Path("mp3.wav")), util::kNoError);
    }
    EXPECT_EQ(vdtest::media::OpenDescriptors(), descriptors);
}

}  // namespace
}  // namespace vd::media
