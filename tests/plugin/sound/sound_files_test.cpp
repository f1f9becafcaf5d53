// Sound files and movies: temporary names and their owners, deleting, PCM conversion with the
// converted flag, MP3 detection and the source behind a movie.
#include "sound_test_support.h"

#include "platform/fs/finder_info.h"
#include "platform/media/new_sound_movie.h"
#include "sound/delete_file.h"
#include "sound/movie_source.h"
#include "platform/common/tick_count.h"
#include "sound/editing/wav_conversion.h"

#include <sys/stat.h>
#include <sys/xattr.h>

#include <regex>

namespace vdtest {
namespace {

using namespace vd::sound;
using vd::media::FourCC;

class SoundFilesTest : public SoundSessionTest {
protected:
    // A sound movie of a file in the data folder, made there first.
    SoundMovie Open(const std::string& name) {
        SoundMovie sound;
        EXPECT_EQ(vd::media::MovieFromFile(Path(name), sound.movie), 0) << name;
        return sound;
    }

    void MakeFiles() {
        // FFmpeg does not recognise an MP3 as short as a tenth of a second: the MP3 is made from half a second.
        writeFile(Path("s16.wav"), media::SineWav(22050, 2));
        writeFile(Path("s24.wav"), media::SineWav(4410, 2, 44100, 24));
        if (!media::HaveFfmpeg()) return;
        media::Ffmpeg({"-i", Path("s16.wav"), "-c:a", "pcm_s16be", Path("tone.aiff")});
        media::Ffmpeg({"-i", Path("s16.wav"), "-c:a", "libmp3lame", Path("tone.mp3")});
    }
};

TEST_F(SoundFilesTest, TemporaryNamesCarryTheTickAndWaitForTheNext) {
    const uint32_t before = TickCount();
    TemporaryFile first, second;
    ASSERT_EQ(TemporaryFile::Create(".wav", first), 0);
    ASSERT_EQ(TemporaryFile::Create(".wav", second), 0);
    const uint32_t after = TickCount();
    const auto tickOf = [](const TemporaryFile& file) -> uint32_t {
        const std::string name = std::filesystem::path(file.Path()).filename();
        std::smatch m;
        EXPECT_TRUE(std::regex_match(name, m, std::regex("temp-([0-9]+)\\.wav"))) << name;
        return m.empty() ? 0 : uint32_t(std::stoul(m[1]));
    };
    const uint32_t tick1 = tickOf(first), tick2 = tickOf(second);
    EXPECT_LE(before, tick1);
    EXPECT_LT(tick1, tick2);  // the same tick's name was taken: the second waited for the next
    EXPECT_LE(tick2, after);
    EXPECT_EQ(std::filesystem::path(first.Path()).parent_path(), TemporaryItems());
    struct stat info {};
    ASSERT_EQ(stat(first.Path().c_str(), &info), 0);
    EXPECT_EQ(info.st_size, 0);
    EXPECT_EQ(info.st_mode & 0777, 0600u);

    // A long extension is cut so the whole name keeps to 63 bytes.
    TemporaryFile longName;
    ASSERT_EQ(TemporaryFile::Create("." + std::string(80, 'x'), longName), 0);
    EXPECT_EQ(std::filesystem::path(longName.Path()).filename().string().size(), kTemporaryNameLimit);
}

TEST_F(SoundFilesTest, OwnersRemoveTheirFilesUnlessHandedOn) {
    std::string kept;
    {
        TemporaryFile dropped, handedOn, replaced;
        ASSERT_EQ(TemporaryFile::Create(".mov", dropped), 0);
        ASSERT_EQ(TemporaryFile::Create(".wav", handedOn), 0);
        ASSERT_EQ(TemporaryFile::Create(".wav", replaced), 0);
        const std::string replacedPath = replaced.Path();
        replaced = std::move(dropped);  // the file held before goes at once
        EXPECT_FALSE(std::filesystem::exists(replacedPath));
        kept = handedOn.Release();
        EXPECT_FALSE(handedOn.Held());
    }
    EXPECT_EQ(LeftoverTemporaryFiles(), std::vector<std::string>{std::filesystem::path(kept).filename()});
    EXPECT_EQ(DeleteFile(kept), 0);
    EXPECT_TRUE(LeftoverTemporaryFiles().empty());

    // Without a usable temporary folder nothing is made and the folder's code comes back.
    writeFile(root_ / "not-a-folder", "x");
    ScopedEnv badTmp("TMPDIR", (root_ / "not-a-folder").string());
    TemporaryFile none;
    EXPECT_NE(TemporaryFile::Create(".wav", none), 0);
    EXPECT_FALSE(none.Held());
    // Deleting refuses folders.
    std::filesystem::create_directories(Data() / "folder");
    EXPECT_EQ(DeleteFile(Path("folder")), -1302);
    EXPECT_TRUE(std::filesystem::exists(Data() / "folder"));
    EXPECT_EQ(DeleteFile(Path("missing")), -43);
    writeFile(Path("file"), "x");
    EXPECT_EQ(DeleteFile(Path("file")), 0);
    EXPECT_FALSE(std::filesystem::exists(Data() / "file"));
}

TEST_F(SoundFilesTest, EnsuringPcmConvertsOnlyWhatNeedsIt) {
    VD_REQUIRE_FFMPEG();
    MakeFiles();
    const int descriptors = media::OpenDescriptors();
    {
        SoundMovie sowt = Open("s16.wav");
        ASSERT_EQ(EnsureLittleEndianPcm(sowt), 0);
        EXPECT_FALSE(sowt.Converted());
        EXPECT_TRUE(LeftoverTemporaryFiles().empty());  // no temporary file was even made

        SoundMovie twos = Open("tone.aiff");
        ASSERT_EQ(EnsurePcm(twos), 0);
        EXPECT_FALSE(twos.Converted());
        ASSERT_EQ(EnsureLittleEndianPcm(twos), 0);
        EXPECT_TRUE(twos.Converted());

        SoundMovie mp3 = Open("tone.mp3");
        ASSERT_EQ(EnsurePcm(mp3), 0);
        ASSERT_TRUE(mp3.Converted());
        EXPECT_EQ(std::filesystem::path(mp3.backing.Path()).parent_path(), TemporaryItems());
        std::string file;
        ASSERT_EQ(FileOfMovie(mp3.movie, file), 0);
        EXPECT_EQ(file, mp3.backing.Path());
        EXPECT_TRUE(vd::media::IsCdQualitySowt(mp3.movie.FirstSoundTrack()->media.Descriptions().at(0)));

        SoundMovie in24 = Open("s24.wav");
        ASSERT_EQ(EnsurePcm(in24), 0);
        EXPECT_TRUE(in24.Converted());
        EXPECT_EQ(in24.movie.FirstSoundTrack()->media.Duration(), 4410);
        EXPECT_EQ(LeftoverTemporaryFiles().size(), 3u);
    }
    EXPECT_TRUE(LeftoverTemporaryFiles().empty());
    EXPECT_EQ(media::OpenDescriptors(), descriptors);

    SoundMovie silent;  // a movie with no sound track
    EXPECT_EQ(EnsurePcm(silent), -2009);
    ASSERT_EQ(vd::media::NewMemorySoundMovie(44100, silent.movie), 0);  // a track whose media has no samples yet
    EXPECT_EQ(EnsurePcm(silent), -2008);
    EXPECT_EQ(WriteMovieAsWav(silent.movie, Path("out.wav")), -2008);
    EXPECT_FALSE(std::filesystem::exists(Data() / "out.wav"));
    SoundMovie rendered;
    RenderStep step;
    EXPECT_EQ(RenderResult(vd::media::Movie(), {}, rendered, step), -2009);
    EXPECT_TRUE(LeftoverTemporaryFiles().empty());
}

TEST_F(SoundFilesTest, MoviesKnowTheirFileFormatAndSamples) {
    writeFile(Path("s16.wav"), media::SineWav(100, 2));
    SoundMovie wav = Open("s16.wav");
    vd::media::FourCharCode subtype = 0;
    ASSERT_EQ(SourceFormatCode(wav.movie, subtype), 0);
    EXPECT_EQ(subtype, FourCC("WAVE"));
    std::vector<uint8_t> bytes;
    int64_t frames = 0;
    ASSERT_EQ(ReadAllSamples(wav.movie.FirstSoundTrack()->media, bytes, frames), 0);
    EXPECT_EQ(frames, 100);
    ASSERT_EQ(bytes.size(), 400u);
    EXPECT_EQ(int16_t(bytes[4 * 10] | bytes[4 * 10 + 1] << 8), media::SineSample(10, 0));

    vd::media::Movie memory;
    ASSERT_EQ(vd::media::NewEmptySoundMovie(memory), 0);
    std::string path;
    EXPECT_EQ(FileOfMovie(memory, path), -2053);
    EXPECT_EQ(SourceFormatCode(memory, subtype), -2053);
    EXPECT_FALSE(IsMp3(memory));

    // Written as WAV: 44100 Hz, 16 bits, stereo, whatever the source.
    ASSERT_EQ(WriteMovieAsWav(memory, Path("silence.wav")), 0);
    EXPECT_EQ(readFile(Data() / "silence.wav").size(), 44u + 4);
}

TEST_F(SoundFilesTest, Mp3IsKnownByNameOrTypeCode) {
    writeFile(Path("song.Mp3"), "not even sound");
    EXPECT_TRUE(IsMp3File(Path("song.Mp3")));
    writeFile(Path("mp3"), "x");
    EXPECT_FALSE(IsMp3File(Path("mp3")));  // three characters: the type code decides
    EXPECT_FALSE(IsMp3File(Path("missing.aif")));
    for (const char* type : {"MPG3", "mp3!"}) EXPECT_TRUE(IsMp3FileType(vdhost::fourCharCode(type))) << type;
    EXPECT_FALSE(IsMp3FileType(FourCC("WAVE")));

    std::string info(32, '\0');
    info.replace(0, 4, "MPG3");
    if (setxattr(Path("mp3").c_str(), vd::platform::fs::kFinderInfoAttribute, info.data(), info.size(), 0) != 0)
        GTEST_SKIP() << "this file system keeps no user attributes";
    EXPECT_TRUE(IsMp3File(Path("mp3")));
}

TEST_F(SoundFilesTest, AnUnsafeTemporaryFolderIsNamedAsTheTrouble) {
    writeFile(Path("deep.wav"), media::SineWav(4410, 2, 44100, 24));  // 24-bit: converted first
    std::filesystem::create_directories(TemporaryItems());
    std::filesystem::permissions(TemporaryItems(), std::filesystem::perms::all);  // open to everyone
    EXPECT_EQ(Text(u"Vandrel_Amplify ( \"deep.wav\" ; 2 )"),
              "$-54:Vandrel_Amplify: Could not get reference to a temporary file.");
    std::filesystem::permissions(TemporaryItems(), std::filesystem::perms::owner_all);
    EXPECT_EQ(SoundStreamOf(Eval(u"Vandrel_Amplify ( \"deep.wav\" ; 2 )")).empty(), false);
}

}  // namespace
}  // namespace vdtest
