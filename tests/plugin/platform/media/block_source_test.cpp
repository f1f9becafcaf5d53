// The sinks of a movie's mix hear the same samples: the WAV file, the movie in memory, the store
// mixed as it is read (in order and backwards), and a device pulling odd block sizes on a thread of
// its own.
#include "platform/media/block_source.h"
#include "platform/media/mixed_sample_store.h"
#include "platform/media/movie_from_file.h"
#include "platform/media/render.h"
#include "platform/media/sample_reading.h"

#include "media_fixtures.h"

#include <cstring>
#include <thread>

namespace vd::media {
namespace {

using Samples = std::vector<int16_t>;

class BlockSourceTest : public ::testing::Test {
protected:
    Movie Opened(const std::string& name, const std::string& wav) {
        vdtest::writeFile(folder.path() / name, wav);
        Movie movie;
        EXPECT_EQ(MovieFromFile((folder.path() / name).string(), movie), util::kNoError);
        return movie;
    }

    // A second track that starts a second in, at half volume, faded in over its first half second.
    void AddQuietTrack(Movie& movie, RenderOptions& options) {
        Movie other = Opened("second.wav", vdtest::media::SineWav(66150, 2));
        Track& added = movie.AddTrack(Characteristic::kAudio, other.TrackAt(0).media);
        added.volume = 128;
        added.InsertMedia(movie.timeScale);
        options.trackRamps.resize(movie.TrackCount());
        options.trackRamps.back() = GainRamp{1.0, 1.5, 0.0f, 1.0f};
    }

    Samples FromFile(const Movie& movie, const RenderOptions& options) {
        const std::string path = (folder.path() / "mix.wav").string();
        EXPECT_EQ(RenderMovie(movie, path, CdQualityWav(), options), util::kNoError);
        const std::string wav = vdtest::readFile(path);
        Samples samples((wav.size() - 44) / 2);
        std::memcpy(samples.data(), wav.data() + 44, samples.size() * 2);
        return samples;
    }

    static Samples FromMedia(const Media& media, int64_t first = 0, int64_t frames = -1) {
        Samples samples;
        EXPECT_EQ(ReadFramesInt16(media, first, frames < 0 ? media.Duration() : frames, samples), util::kNoError);
        return samples;
    }

    static Samples PulledOnAnotherThread(const Movie& movie, const RenderOptions& options) {
        std::unique_ptr<MixedBlockSource> source;
        EXPECT_EQ(MixedBlockSource::Open(movie, CdQualityWav(), options, source), util::kNoError);
        DevicePull device(std::move(source));
        Samples pulled;
        std::thread([&] {
            const size_t sizes[] = {1, 7, 4095, 4097, 65537, 333};
            Samples block;
            for (size_t i = 0;; ++i) {
                const size_t want = sizes[i % std::size(sizes)];
                block.assign(want * 2, 0);
                const size_t got = device.Pull(block.data(), want);
                pulled.insert(pulled.end(), block.begin(), block.begin() + std::ptrdiff_t(got * 2));
                if (got < want) break;
            }
        }).join();
        EXPECT_EQ(device.LastStatus(), util::kNoError);
        return pulled;
    }

    vdtest::TempFolder folder;
};

TEST_F(BlockSourceTest, EverySinkHearsTheSameSamples) {
    struct Case { const char* name; Movie movie; RenderOptions options; };
    std::vector<Case> cases;
    cases.push_back({"copied", Opened("copied.wav", vdtest::media::SineWav(100000, 2)), {}});
    cases.push_back({"resampled", Opened("mono.wav", vdtest::media::SineWav(50000, 1, 22050)), {}});
    cases.push_back({"two tracks", Opened("first.wav", vdtest::media::SineWav(70000, 2)), {}});
    AddQuietTrack(cases.back().movie, cases.back().options);

    for (Case& c : cases) {
        SCOPED_TRACE(c.name);
        const Samples file = FromFile(c.movie, c.options);
        ASSERT_GT(file.size(), 2u * 65536);

        Movie inMemory;
        ASSERT_EQ(RenderToMemory(c.movie, c.options, inMemory), util::kNoError);
        EXPECT_EQ(FromMedia(inMemory.FirstSoundTrack()->media), file);
        EXPECT_EQ(PulledOnAnotherThread(c.movie, c.options), file);

        if (!MixLengthKnown(c.movie, CdQualityWav())) continue;
        EXPECT_EQ(StatedMixFrames(c.movie, CdQualityWav()) * 2, int64_t(file.size()));
        Movie onRead;
        ASSERT_EQ(MixOnReadMovie(std::move(c.movie), c.options, onRead), util::kNoError);
        const Media& mixed = onRead.FirstSoundTrack()->media;
        EXPECT_EQ(FromMedia(mixed), file);
        // Backwards after the end, then a jump forwards.
        EXPECT_EQ(FromMedia(mixed, 70000, 5), Samples(file.begin() + 140000, file.begin() + 140010));
        EXPECT_EQ(FromMedia(mixed, 90001, 3), Samples(file.begin() + 180002, file.begin() + 180008));
    }
}

}  // namespace
}  // namespace vd::media
