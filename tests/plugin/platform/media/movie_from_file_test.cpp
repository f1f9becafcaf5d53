// Opening sound files of every kind the layer knows as movies: tracks, descriptions, importer
// subtypes, durations; and damaged, cut-off and non-media files answering a status, not a crash.
#include "platform/media/codec_formats.h"
#include "platform/media/importer_subtypes.h"
#include "platform/media/movie_from_file.h"
#include "platform/media/plain_wav.h"
#include "platform/media/render.h"
#include "platform/media/sample_reading.h"

#include "media_fixtures.h"

#include <fcntl.h>

#include <set>

namespace vd::media {
namespace {

using vdtest::media::Ffmpeg;

class MovieFromFileTest : public ::testing::Test {
protected:
    static void SetUpTestSuite() {
        folder_ = new vdtest::TempFolder;
        vdtest::writeFile(Path("s16.wav"), vdtest::media::SineWav(44100, 2));
        vdtest::writeFile(Path("u8.wav"), vdtest::media::SineWav(22050, 1, 22050, 8));
        vdtest::writeFile(Path("s24.wav"), vdtest::media::SineWav(44100, 2, 44100, 24));
        if (!vdtest::media::HaveFfmpeg()) return;
        const std::string in = Path("s16.wav");
        Ffmpeg({"-i", in, "-c:a", "pcm_s16be", Path("be.aiff")});
        Ffmpeg({"-i", in, "-c:a", "aac", Path("tone.m4a")});
        vdtest::writeFile(Path("note.srt"), "1\n00:00:00,000 --> 00:00:01,000\nThis file has no preview\n");
        Ffmpeg({"-f", "lavfi", "-i", "color=c=red:s=16x16:d=1", "-i", in, "-i", Path("u8.wav"), "-i", Path("note.srt"),
                "-map", "0", "-map", "1", "-map", "2", "-map", "3", "-c:v", "mjpeg", "-c:a", "pcm_s16le", "-c:s",
                "mov_text", Path("visual.mov")});
    }
    static void TearDownTestSuite() { delete folder_; }
    static std::string Path(const std::string& name) { return (*folder_ / name).string(); }

    static vdtest::TempFolder* folder_;
};
vdtest::TempFolder* MovieFromFileTest::folder_ = nullptr;

// frames are exact for PCM; tolerance is how far a compressed file's stated duration may be off.
struct Expected { const char *file, *importer, *format; int channels, bits, rate; int64_t frames, tolerance; };

TEST_F(MovieFromFileTest, DescribesEveryKindOfSoundFile) {
    const Expected cases[] = {
        {"s16.wav", "WAVE", "sowt", 2, 16, 44100, 44100, 0},
        {"u8.wav", "WAVE", "raw ", 1, 8, 22050, 22050, 0},
        {"s24.wav", "WAVE", "in24", 2, 24, 44100, 44100, 0},
        {"be.aiff", "AIFF", "twos", 2, 16, 44100, 44100, 0},
        {"tone.m4a", "M4A ", "mp4a", 2, 16, 44100, 44100, 2048},  // counts the encoder's priming frames
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.file);
        if (!std::filesystem::exists(Path(c.file))) GTEST_SKIP() << "the ffmpeg program is not installed";
        Movie movie;
        ASSERT_EQ(MovieFromFile(Path(c.file), movie), util::kNoError) << LastMediaErrorDetail();
        FourCharCode importer = 0;
        ASSERT_EQ(movie.SourceFormat(importer), util::kNoError);
        EXPECT_EQ(FourCCText(importer), c.importer);
        const Track* track = movie.FirstSoundTrack();
        ASSERT_NE(track, nullptr);
        const SampleDescription& d = track->media.Descriptions().front();
        EXPECT_EQ(FourCCText(d.dataFormat), c.format);
        EXPECT_EQ(d.numberOfChannels, c.channels);
        EXPECT_EQ(d.sampleSize, c.bits);
        EXPECT_EQ(d.sampleRate, uint32_t(c.rate) << 16);
        EXPECT_EQ(track->media.timeScale, c.rate);
        EXPECT_NEAR(double(track->media.Duration()), double(c.frames), double(c.tolerance));
        EXPECT_NEAR(double(track->Duration(movie.timeScale)), 600.0, 600.0 * (c.tolerance + 1) / c.rate);
    }
}

TEST_F(MovieFromFileTest, EveryAudioStreamIsATrackAndOtherStreamsKeepTheirKind) {
    VD_REQUIRE_FFMPEG();
    Movie visual;
    ASSERT_EQ(MovieFromFile(Path("visual.mov"), visual), util::kNoError);
    auto audio = visual.TracksWith(Characteristic::kAudio);
    ASSERT_EQ(audio.size(), 2u);
    EXPECT_EQ(audio[0]->media.Duration(), 44100);
    EXPECT_EQ(audio[1]->media.Descriptions().front().numberOfChannels, 1);
    EXPECT_EQ(audio[1]->media.timeScale, 22050);
    EXPECT_EQ(audio[1]->media.Duration(), 22050);
    ASSERT_EQ(visual.TracksWith(Characteristic::kVisual).size(), 1u);
    const auto& picture = visual.TracksWith(Characteristic::kVisual)[0]->media.Descriptions().front();
    EXPECT_EQ(FourCCText(picture.dataFormat), "jpeg");
    EXPECT_EQ(picture.width, 16);
    ASSERT_EQ(visual.TracksWith(Characteristic::kText).size(), 1u);
    // A QuickTime text sample: its 16-bit big-endian length, then the text.
    const auto& sample = visual.TracksWith(Characteristic::kText)[0]->media.FirstTextSample();
    const std::string expected = std::string("\0\x18", 2) + "This file has no preview";
    ASSERT_GE(sample.size(), expected.size());
    EXPECT_EQ(std::string(sample.begin(), sample.begin() + std::ptrdiff_t(expected.size())), expected);
}

TEST_F(MovieFromFileTest, MissingFoldersAndNonMediaFilesAnswerTheirCodes) {
    Movie movie;
    EXPECT_EQ(MovieFromFile(Path("absent.wav"), movie), util::kFileNotFound);
    EXPECT_EQ(MovieFromFile(folder_->path().string(), movie), util::kNotAFile);
    vdtest::writeFile(Path("empty.wav"), "");
    EXPECT_EQ(MovieFromFile(Path("empty.wav"), movie), util::kMovieNotFound);
    vdtest::writeFile(Path("letter.txt"), "Dear reader,\nthis is plain text and no sound at all.\n");
    EXPECT_EQ(MovieFromFile(Path("letter.txt"), movie), util::kMovieNotFound);
    if (geteuid() != 0) {
        vdtest::writeFile(Path("locked.wav"), vdtest::media::SineWav(100, 1));
        std::filesystem::permissions(Path("locked.wav"), std::filesystem::perms::none);
        EXPECT_EQ(MovieFromFile(Path("locked.wav"), movie), util::kPermissionDenied);
    }
}

// Reading everything and rendering must end with a status, whatever the file holds.
void ReadAndRenderAll(const std::string& path, const std::string& output) {
    Movie movie;
    if (MovieFromFile(path, movie) != util::kNoError) return;
    if (const Track* track = movie.FirstSoundTrack()) {
        std::vector<int16_t> samples;
        Status s = ReadFramesInt16(track->media, 0, track->media.Duration(), samples);
        EXPECT_LE(samples.size(), size_t(track->media.Duration()) * size_t(track->media.Descriptions()[0].numberOfChannels));
        (void)s;
        (void)RenderMovie(movie, output);
    }
}

TEST_F(MovieFromFileTest, CutOffAndDamagedFilesFailCleanly) {
    for (const char* name : {"s16.wav", "u8.wav", "be.aiff", "tone.m4a", "visual.mov"}) {
        SCOPED_TRACE(name);
        if (!std::filesystem::exists(Path(name))) continue;
        const std::string whole = vdtest::readFile(Path(name));
        const std::string ext = std::filesystem::path(name).extension();
        Movie movie;

        // Cut inside the header: nothing to open.
        vdtest::writeFile(Path("cut" + ext), whole.substr(0, 10));
        EXPECT_EQ(MovieFromFile(Path("cut" + ext), movie), util::kMovieNotFound) << LastMediaErrorDetail();

        // Garbage from the first byte on: not a movie.
        std::string garbage(whole.size(), '\0');
        uint32_t x = 12345;
        for (char& ch : garbage) ch = char((x = x * 1103515245 + 12345) >> 24);
        vdtest::writeFile(Path("garbage" + ext), garbage);
        EXPECT_NE(MovieFromFile(Path("garbage" + ext), movie), util::kNoError);

        // Cut in the middle, or damaged after the header: opens or not, never crashes or reads
        // past what is there.
        vdtest::writeFile(Path("half" + ext), whole.substr(0, whole.size() / 2));
        ReadAndRenderAll(Path("half" + ext), Path("half-out.wav"));
        std::string damaged = whole;
        for (size_t i = 200; i < damaged.size(); i += 7) damaged[i] = char(damaged[i] ^ 0x5A);
        vdtest::writeFile(Path("damaged" + ext), damaged);
        ReadAndRenderAll(Path("damaged" + ext), Path("damaged-out.wav"));
    }
}

TEST(MediaFormatTables, CodecRowsAgreeWithTheirNamesAndImportersWithTheirDemuxers) {
    std::set<std::string> names;
    for (const CodecFormat& row : CodecFormats()) {
        const std::string name = row.codecName;
        SCOPED_TRACE(name);
        EXPECT_TRUE(names.insert(name).second) << "listed twice";
        EXPECT_EQ(FindCodecFormat(name), &row);
        if (name.rfind("pcm_", 0) != 0 || name.size() < 6) continue;
        const std::string tail = name.substr(name.size() - 2);
        if (tail == "be" || tail == "le") { EXPECT_EQ(row.bigEndian, tail == "be"); }
        const size_t digits = name.find_first_of("0123456789");
        if (digits != std::string::npos) { EXPECT_EQ(row.sampleSize, std::stoi(name.substr(digits))); }
    }
    EXPECT_EQ(FindCodecFormat("no_such_codec"), nullptr);

    const char* mov = "mov,mp4,m4a,3gp,3g2,mj2";
    EXPECT_EQ(ImporterSubtypeFor(mov, "qt  ", true), FourCC("MooV"));
    EXPECT_EQ(ImporterSubtypeFor(mov, "isom", true), FourCC("mpg4"));
    // A demuxer without a Mac importer is named by its own name.
    EXPECT_EQ(ImporterSubtypeFor("tty", "", false), FourCC("TTY "));
}


// The movie of a WAV file must not depend on which opener read it: the plain reader and the
// libraries agree on every field and every sample, and the reader leaves what it does not know
// to the libraries.
class PlainWavTest : public ::testing::Test {
protected:
    std::string Path(const char* name) { return (folder_ / name).string(); }

    void ExpectSameMovie(const std::string& path) {
        SCOPED_TRACE(path);
        Movie plain, library;
        ASSERT_EQ(MovieFromFile(path, plain), util::kNoError);
        ASSERT_EQ(MovieFromFileByLibraries(path, library), util::kNoError);
        EXPECT_EQ(plain.importerSubtype, library.importerSubtype);
        EXPECT_EQ(plain.creationTime, library.creationTime);
        EXPECT_EQ(plain.dataReference.path, library.dataReference.path);
        ASSERT_EQ(plain.TrackCount(), 1u);
        ASSERT_EQ(library.TrackCount(), 1u);
        const Media& a = plain.TrackAt(0).media;
        const Media& b = library.TrackAt(0).media;
        EXPECT_EQ(a.timeScale, b.timeScale);
        EXPECT_EQ(a.Descriptions(), b.Descriptions());
        EXPECT_EQ(a.Duration(), b.Duration());
        EXPECT_EQ(plain.Duration(), library.Duration());
        std::vector<uint8_t> bytesA, bytesB;
        ASSERT_EQ(ReadStoredBytes(a, 0, a.Duration(), bytesA), util::kNoError);
        ASSERT_EQ(ReadStoredBytes(b, 0, b.Duration(), bytesB), util::kNoError);
        EXPECT_EQ(bytesA, bytesB);
    }

    vdtest::TempFolder folder_;
};

TEST_F(PlainWavTest, BothOpenersGiveTheSameMovie) {
    using vdtest::media::PcmWav;
    vdtest::writeFile(Path("s16.wav"), vdtest::media::SineWav(4410, 2));
    vdtest::writeFile(Path("u8.wav"), vdtest::media::SineWav(2205, 1, 22050, 8));
    vdtest::writeFile(Path("s24.wav"), vdtest::media::SineWav(441, 3, 48000, 24));
    vdtest::writeFile(Path("empty.wav"), PcmWav("", 2, 44100, 16));
    // A chunk of odd size before the data (padded to even), and a data chunk that claims more than
    // the file holds: both openers read what is there, and agree on how much that is.
    std::string odd = PcmWav(std::string(400, '\x11'), 2, 44100, 16);
    odd.insert(36, std::string("note\x03\x00\x00\x00" "abc\0", 12));
    odd[4] = char(uint8_t(odd[4]) + 12);
    vdtest::writeFile(Path("odd.wav"), odd);
    std::string cut = PcmWav(std::string(400, '\x22'), 1, 8000, 16);
    vdtest::writeFile(Path("cut.wav"), cut.substr(0, cut.size() - 101));
    for (const char* name : {"s16.wav", "u8.wav", "s24.wav", "empty.wav", "odd.wav", "cut.wav"}) ExpectSameMovie(Path(name));

    if (!vdtest::media::HaveFfmpeg()) return;
    const std::string in = Path("s16.wav");
    Ffmpeg({"-i", in, "-c:a", "pcm_f32le", Path("f32.wav")});
    Ffmpeg({"-i", in, "-c:a", "pcm_s32le", "-rf64", "never", Path("s32.wav")});
    Ffmpeg({"-i", in, "-ac", "6", "-c:a", "pcm_s16le", Path("six.wav")});  // written as extensible
    for (const char* name : {"f32.wav", "s32.wav", "six.wav"}) ExpectSameMovie(Path(name));
}

TEST_F(PlainWavTest, OtherWavFilesAreLeftToTheLibraries) {
    PlainWavLayout layout;
    auto plain = [&](const std::string& bytes) {
        vdtest::writeFile(Path("x.wav"), bytes);
        const int fd = ::open(Path("x.wav").c_str(), O_RDONLY);
        const bool answer = ReadPlainWavLayout(fd, int64_t(bytes.size()), layout);
        ::close(fd);
        return answer;
    };
    std::string wav = vdtest::media::PcmWav(std::string(40, '\0'), 2, 44100, 16);
    EXPECT_TRUE(plain(wav));
    EXPECT_EQ(layout.dataOffset, 44);
    EXPECT_EQ(layout.dataSize, 40);
    std::string alaw = wav;
    alaw[20] = 6;  // A-law samples
    EXPECT_FALSE(plain(alaw));
    std::string streamed = wav;
    streamed.replace(40, 4, "\xFF\xFF\xFF\xFF");
    EXPECT_FALSE(plain(streamed));
    EXPECT_FALSE(plain(vdtest::media::PcmWav(std::string(40, '\0'), 2, 44100, 12)));
    EXPECT_FALSE(plain("RIFF\x04\x00\x00\x00WAVE"));  // no chunks at all
    EXPECT_FALSE(plain(std::string("RIFX") + wav.substr(4)));

    Movie movie;
    vdtest::writeFile(Path("law.wav"), alaw);
    if (vdtest::media::HaveFfmpeg()) {
        ASSERT_EQ(MovieFromFile(Path("law.wav"), movie), util::kNoError);  // read by the libraries instead
        EXPECT_EQ(movie.TrackAt(0).media.Descriptions().front().dataFormat, FourCC("alaw"));
    }
}

}  // namespace
}  // namespace vd::media
