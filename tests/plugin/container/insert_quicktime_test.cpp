// Vandrel_InsertQuickTime through the host: what reference each kind of file gets, the reference
// movie beside a sound (read back by our own sound functions and by FFmpeg's demuxer), the Import
// dialog, and the copy of files on remote volumes.
#include "plugin/sound/sound_test_support.h"

#include "container/movie_insertion.h"
#include "fmapi/errors/vds_error.h"

#include <support/process.h>

namespace vdtest {
namespace {

class InsertQuickTimeTest : public SoundSessionTest {
protected:
    InsertQuickTimeTest() : script_("VANDREL_UI_SCRIPT", Path("answers.txt")) { Answer(""); }
    void Answer(const std::string& lines) { Write("answers.txt", lines + "\n"); }

    std::string Insert(const std::string& file) { return Text(u"Vandrel_InsertQuickTime ( $a )", {vdhost::makeTextUtf8(file)}); }
    std::string LastError() { return Text(u"Vandrel_GetLastError"); }
    // A sound file made by ffmpeg from a second of a stereo sine.
    std::string Sound(const std::string& name, std::vector<std::string> codec = {}) {
        const std::string wav = Write("sine-source.wav", media::SineWav(44100, 2));
        std::vector<std::string> arguments{"-i", wav};
        arguments.insert(arguments.end(), codec.begin(), codec.end());
        arguments.push_back(Path(name));
        media::Ffmpeg(arguments);
        return Path(name);
    }
    // Every sample of the file's first sound as 16-bit PCM, as the ffmpeg program decodes it.
    static std::string Decoded(const std::string& file, bool followReferences) {
        std::vector<std::string> argv{media::FfmpegPath(), "-nostdin", "-loglevel", "error"};
        if (followReferences) argv.insert(argv.end(), {"-enable_drefs", "1"});
        argv.insert(argv.end(), {"-i", file, "-map", "0:a:0", "-f", "s16le", "-"});
        const auto r = runProcess(argv);
        EXPECT_EQ(r.status, 0) << r.err;
        return r.out;
    }
    // The names in the data folder that a failed or finished write must not leave: hidden pending files.
    std::vector<std::string> HiddenFiles() const {
        std::vector<std::string> hidden;
        for (const auto& name : media::FolderEntries(Data()))
            if (name[0] == '.') hidden.push_back(name);
        return hidden;
    }

    ScopedEnv script_;
};

TEST_F(InsertQuickTimeTest, SoundGetsReferenceMovieThatReadersFollowToItsSamples) {
    VD_REQUIRE_FFMPEG();
    for (const auto& [name, codec] : {std::pair<std::string, std::vector<std::string>>{"song.aif", {}},
                                      {"song.m4a", {"-c:a", "aac"}},
                                      {"song24.wav", {"-c:a", "pcm_s24le"}}}) {
        SCOPED_TRACE(name);
        const std::string sound = Sound(name, codec);
        const std::string movie = vd::container::ReferenceMovieName(sound);
        EXPECT_EQ(Lines(Insert(sound)), (std::vector<std::string>{"size:0,0", "moviemac:" + movie.substr(Data().string().size() + 1),
                                                                  "moviemac:" + movie}));
        ASSERT_TRUE(std::filesystem::exists(movie));
        // Our sound functions open the source in its place; FFmpeg plays the same samples from it.
        EXPECT_EQ(Text(u"Vandrel_GetSoundInfo ( $a )", {vdhost::makeTextUtf8(movie)}),
                  Text(u"Vandrel_GetSoundInfo ( $a )", {vdhost::makeTextUtf8(sound)}));
        EXPECT_EQ(Decoded(movie, true), Decoded(sound, false));
    }
    EXPECT_EQ(HiddenFiles(), std::vector<std::string>{});
    EXPECT_EQ(LeftoverTemporaryFiles(), std::vector<std::string>{});
}

TEST_F(InsertQuickTimeTest, ReferenceMovieMovedWithItsSoundStillFindsIt) {
    VD_REQUIRE_FFMPEG();
    std::filesystem::create_directories(Data() / "album");
    const std::string sound = Sound("album/song.aif");
    Insert(sound);
    std::filesystem::rename(Data() / "album", Data() / "moved");
    const std::string info = Text(u"Vandrel_GetSoundInfo ( $a )", {vdhost::makeTextUtf8(Path("moved/song_ref.mov"))});
    EXPECT_EQ(info.rfind("Format: AIFF", 0), 0u) << info;

    std::filesystem::remove(Data() / "moved" / "song.aif");
    EXPECT_EQ(Text(u"Vandrel_GetSoundInfo ( $a )", {vdhost::makeTextUtf8(Path("moved/song_ref.mov"))}),
              "$-43:Vandrel_GetSoundInfo: Could not get parameter #1 as sound.");
}

TEST_F(InsertQuickTimeTest, WhatTheFileIsDecidesItsReference) {
    VD_REQUIRE_FFMPEG();
    media::Ffmpeg({"-f", "lavfi", "-i", "testsrc=duration=0.5:size=64x48:rate=10", "-f", "lavfi", "-i",
                   "sine=duration=0.5", "-shortest", Path("clip.mov")});
    EXPECT_EQ(Lines(Insert(Path("clip.mov"))).front(), "size:0,0");
    EXPECT_FALSE(std::filesystem::exists(Data() / "clip_ref.mov")) << "a movie with a picture shows itself";

    media::Ffmpeg({"-f", "lavfi", "-i", "testsrc=size=40x30", "-frames:v", "1", Path("picture.png")});
    EXPECT_EQ(Lines(Insert("picture.png")), (std::vector<std::string>{"size:40,30", "moviemac:picture.png",
                                                                        "moviemac:" + Path("picture.png")}));

    Write("notes.txt", "no media here\n");
    const FMX_Data failed = Eval(u"Vandrel_InsertQuickTime ( \"notes.txt\" )");
    EXPECT_TRUE(vdhost::isContainer(failed) && failed.binary.streams.empty()) << "a failure answers an empty container";
    EXPECT_EQ(LastError(), "$-2003:Vandrel_InsertQuickTime: QuickTime does not seem to understand to this file.");
    EXPECT_EQ(Insert("missing.wav"), "");
    EXPECT_EQ(LastError(), "$-43:Vandrel_InsertQuickTime: Failed to find input file.");

    // A coding a sound track cannot refer to: the reference movie fails and leaves nothing.
    Sound("song.flac", {"-c:a", "flac"});
    EXPECT_EQ(Insert("song.flac"), "");
    EXPECT_EQ(LastError(), "$-2053:Vandrel_InsertQuickTime: Linking media has failed.");
    EXPECT_FALSE(std::filesystem::exists(Data() / "song_ref.mov"));
    EXPECT_EQ(HiddenFiles(), std::vector<std::string>{});

    EXPECT_EQ(CallDirectly(16, {vdhost::makeTextUtf8("a"), vdhost::makeTextUtf8("b")}), "");
    EXPECT_EQ(vd::gLastError.StatusText(), "$-50:Vandrel_InsertQuickTime: This function requires zero or 1 parameter.");
}

TEST_F(InsertQuickTimeTest, ImportDialogChoosesTheFile) {
    VD_REQUIRE_FFMPEG();
    media::Ffmpeg({"-f", "lavfi", "-i", "testsrc=size=20x10", "-frames:v", "1", Path("photo.png")});
    Answer("cancel\nchoose-file " + Path("photo.png"));
    EXPECT_EQ(Text(u"Vandrel_InsertQuickTime"), "");
    EXPECT_EQ(LastError(), "$-128:Vandrel_InsertQuickTime: Choosing file failed.");
    EXPECT_EQ(Lines(Text(u"Vandrel_InsertQuickTime")).front(), "size:20,10");
}

TEST_F(InsertQuickTimeTest, RemoteSoundIsCopiedToTheTemporaryFolderAfterOneWarning) {
    VD_REQUIRE_FFMPEG();
    std::filesystem::create_directories(Data() / "share");
    ScopedEnv remote("VANDREL_REMOTE_MOUNTS", "/nowhere:" + Path("share"));
    const std::string sound = Sound("share/song.aif");
    // The alert takes the first answer; were it shown again, the dialog would get "ok" and fail.
    Answer("ok\nchoose-file " + sound);
    for (int insert = 0; insert < 2; ++insert) {
        const std::vector<std::string> lines = Lines(Insert(sound));
        ASSERT_EQ(lines.size(), 3u) << LastError();
        const std::string movie = lines[2].substr(std::string("moviemac:").size());
        EXPECT_EQ(std::filesystem::path(movie).parent_path(), TemporaryItems());
        const std::string copy = movie.substr(0, movie.size() - std::string("_ref.mov").size()) + ".aif";
        EXPECT_EQ(Decoded(copy, false), Decoded(sound, false));
        EXPECT_EQ(Decoded(movie, true), Decoded(sound, false));
    }
    EXPECT_FALSE(std::filesystem::exists(Data() / "share" / "song_ref.mov")) << "nothing is written on the remote volume";
    EXPECT_EQ(Lines(Text(u"Vandrel_InsertQuickTime")).size(), 3u) << LastError();
}

}  // namespace
}  // namespace vdtest
