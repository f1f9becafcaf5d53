// Arguments as sound movies: real files of every format the tests can make, reached as reference
// texts relative to the database, as paths, as containers stored by reference and as "snd " streams;
// the limits on reference texts; no descriptor left open. (Damaged files of every format are the
// movie layer's tests.)
#include "container/movie_parameter.h"
#include "container/sound_container.h"
#include "container/sound_resource.h"
#include "container_test_support.h"
#include "util/status_codes.h"
#include "plugin/platform/media/media_fixtures.h"

namespace vdtest {
namespace {

using vd::container::MovieFromParameter;
using vdtest::media::Ffmpeg;

// The route to a file is what is tested here: one PCM file the plug-in reads itself, one it
// converts first, one compressed.
struct Format {
    const char* file;
    std::vector<std::string> ffmpegArguments;  // empty: written here as a WAV
    int bits;
};
const Format kFormats[] = {{"s16.wav", {}, 16}, {"s24.wav", {}, 24}, {"tone.m4a", {"-c:a", "aac"}, 0}};

constexpr int64_t kFrames = 22050;  // half a second at 44100 Hz

class MovieParameterTest : public ::testing::Test {
protected:
    MovieParameterTest() {
        for (const Format& f : kFormats) {
            if (f.bits) writeFile(Path(f.file), media::SineWav(kFrames, 2, 44100, f.bits));
            else if (media::HaveFfmpeg()) {
                std::vector<std::string> arguments{"-i", Path("s16.wav")};
                arguments.insert(arguments.end(), f.ffmpegArguments.begin(), f.ffmpegArguments.end());
                arguments.push_back(Path(f.file));
                Ffmpeg(arguments);
            }
        }
    }
    std::string Path(const std::string& name) const { return (host.Folder() / name).string(); }

    // Opens argument 0 and, when that works, converts it for storing, which reads every sample.
    int32_t OpenAndRead(const FMX_Data& argument, int64_t* frames = nullptr) {
        FMX_DataVect args;
        args.items.push_back(argument);
        vd::media::Movie movie;
        bool found = false;
        int32_t e = MovieFromParameter(&args, 0, movie, found);
        if (e) return e;
        if (!found) return 1;
        std::vector<uint8_t> stream;
        e = vd::container::SoundResourceOfMovie(movie, stream);
        if (frames) *frames = e ? -1 : int64_t(stream.size()) - 42;
        return e;
    }

    HostWithDatabase host;
};

TEST_F(MovieParameterTest, EveryFormatOpensByEveryRoute) {
    VD_REQUIRE_FFMPEG();
    const int before = media::OpenDescriptors();
    for (const Format& f : kFormats) {
        SCOPED_TRACE(f.file);
        const std::string absolute = Path(f.file);
        const FMX_Data routes[] = {
            vdhost::makeTextUtf8(std::string("movie:") + f.file),  // relative to the database
            vdhost::makeTextUtf8(f.file),
            vdhost::makeTextUtf8(absolute),
            vdhost::makeTextUtf8("moviemac:" + absolute),
            vdhost::makeContainer({}, vdhost::makeTextUtf8("size:0,0\rmovie:missing.wav\rmoviemac:" + absolute).text.units),
        };
        for (const FMX_Data& route : routes) {
            int64_t frames = 0;
            ASSERT_EQ(OpenAndRead(route, &frames), 0);
            // Compressed formats may add their encoder's delay or lose a frame at the end.
            EXPECT_NEAR(double(frames), double(kFrames), 3000);
        }
    }
    EXPECT_EQ(media::OpenDescriptors(), before);
}

TEST_F(MovieParameterTest, ContainersEmptyValuesAndMissingFiles) {
    const std::vector<uint8_t> samples(10, 200);
    const std::vector<uint8_t> resource = vd::container::BuildSoundResource(samples.data(), samples.size());
    int64_t frames = 0;
    EXPECT_EQ(OpenAndRead(ContainerOf({{"FNAM", "x"}, {"snd ", std::string(resource.begin(), resource.end())}}), &frames), 0);
    EXPECT_EQ(frames, 10);
    EXPECT_EQ(OpenAndRead(ContainerOf({{"JPEG", "j"}})), vd::util::kNoSoundStream);
    EXPECT_EQ(OpenAndRead(ContainerOf({{"snd ", "\x00\x01"}})), -2001);
    EXPECT_EQ(OpenAndRead(vdhost::makeText(u"")), 1);  // nothing, and no error
    EXPECT_EQ(OpenAndRead(vdhost::makeNumber(3)), 1);
    EXPECT_EQ(OpenAndRead(vdhost::makeTextUtf8("nothing-here.wav")), -43);
    EXPECT_EQ(OpenAndRead(vdhost::makeContainer({}, u"size:0,0\rmovie:gone.wav\rmoviemac:/no/such/gone.wav")), -43);
    writeFile(Path("text.wav"), "this is not sound at all, only words");
    EXPECT_EQ(OpenAndRead(vdhost::makeTextUtf8("text.wav")), -2048);
    std::filesystem::create_directories(Path("folder.wav"));
    EXPECT_EQ(OpenAndRead(vdhost::makeTextUtf8("folder.wav")), -1302);

    FMX_DataVect none;
    vd::media::Movie movie;
    bool found = true;
    EXPECT_EQ(MovieFromParameter(&none, 0, movie, found), -50);
    EXPECT_FALSE(found);
}

TEST_F(MovieParameterTest, ReferenceTextsAreReadUpToTheirLimits) {
    writeFile(Path("x.wav"), media::SineWav(100, 1));
    // "movie:" + "./" × n + "x.wav": a reference of exactly the length wanted.
    auto reference = [](size_t length) {
        std::string r = "movie:";
        while (r.size() + 5 + 2 <= length) r += "./";
        return r + std::string(length - r.size() - 5, '/') + "x.wav";
    };
    const std::string full = reference(1024);
    ASSERT_EQ(full.size(), 1024u);
    EXPECT_EQ(OpenAndRead(vdhost::makeTextUtf8(full + "junk after the limit")), 0);
    EXPECT_EQ(OpenAndRead(vdhost::makeTextUtf8(reference(1025))), -43);  // the cut takes the "v"

    const std::string head = "size:0,0\r";
    const std::string line = reference(512 - head.size());
    EXPECT_EQ(OpenAndRead(vdhost::makeContainer({}, vdhost::makeTextUtf8(head + line + "\rjunk").text.units)), 0);
    const std::string longer = reference(513 - head.size());
    EXPECT_EQ(OpenAndRead(vdhost::makeContainer({}, vdhost::makeTextUtf8(head + longer).text.units)), -43);
}

}  // namespace
}  // namespace vdtest
