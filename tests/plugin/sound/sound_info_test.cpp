// Vandrel_GetSoundInfo through the host: the report's lines for the common file formats, several
// tracks, sounds that live in a container, files without sound, and reading values back out.
#include "sound/information/sound_info.h"

#include "plugin/sound/sound_test_support.h"

#include <cctype>

namespace vdtest {
namespace {

using media::Ffmpeg;
using media::SineWav;

// The value after "label: " on the first line that starts with label (indentation included).
std::string Field(const std::string& report, const std::string& label) {
    for (const auto& line : Lines(report))
        if (line.rfind(label + ": ", 0) == 0) return line.substr(label.size() + 2);
    return "<missing " + label + ">";
}

// A line ending in a date text "dd-mm-yyyy hh:mm:ss" with the date replaced by "<date>".
std::string MaskDate(const std::string& line) {
    const std::string layout = "00-00-0000 00:00:00";
    if (line.size() < layout.size()) return line;
    const size_t at = line.size() - layout.size();
    for (size_t i = 0; i < layout.size(); ++i) {
        const char c = line[at + i];
        if (layout[i] == '0' ? !std::isdigit(static_cast<unsigned char>(c)) : c != layout[i]) return line;
    }
    return line.substr(0, at) + "<date>";
}

class SoundInfoTest : public SoundSessionTest {
protected:
    std::string Info(const std::string& path) {
        return Text(u"Vandrel_GetSoundInfo ( $a )", {vdhost::makeTextUtf8(path)});
    }
};

TEST_F(SoundInfoTest, WavReportHasEveryLineInOrder) {
    const std::string report = Info(Write("tone.wav", SineWav(44100, 2)));
    std::vector<std::string> lines = Lines(report);
    for (auto& line : lines) line = MaskDate(line);
    const std::vector<std::string> expected{
        "Format: WAVE", "Track 1", "  Volume: 256", "  Duration (s): 000:00:01.000",
        "  Creation Date (ts): <date>", "  Modification Date (ts): <date>",
        "  Media", "    Media Duration (s): 000:00:01.000",
        "    Media Creation Date (ts): <date>", "    Media Modification Date (ts): <date>",
        "    Media Language: 0", "    Media Quality: 0",
        "    Sample Description 1", "      Sample Format: sowt", "      Number of Channels: 2",
        "      Sample Size (b): 16", "      Sample Rate (Hz): 44100", "      Bit Rate (kbps): 1411",
    };
    EXPECT_EQ(lines, expected) << report;
    EXPECT_EQ(report.back(), '\r');

    // The report is what Vandrel_ExtractInfo reads values from.
    EXPECT_EQ(Text(u"Vandrel_ExtractInfo ( Vandrel_GetSoundInfo ( $a ) ; "
                   u"\"Track 1/Media/Sample Description 1/Sample Rate (Hz)\" )",
                   {vdhost::makeTextUtf8((Data() / "tone.wav").string())}),
              "44100");
}

TEST_F(SoundInfoTest, CompressedFormatsReportTheirOwnFieldsAndTheDurationsTheEditsProduce) {
    VD_REQUIRE_FFMPEG();
    const std::string wav = Write("source.wav", SineWav(44100, 2));
    // (Other formats' codes are pinned where files are opened; the report prints what they give.)
    const auto mp3 = Data() / "tone.mp3", alac = Data() / "tone24.m4a";
    Ffmpeg({"-i", wav, "-c:a", "libmp3lame", "-b:a", "128k", mp3.string()});
    Ffmpeg({"-i", wav, "-c:a", "alac", "-sample_fmt", "s32p", alac.string()});

    const std::string m = Info(mp3.string());
    EXPECT_EQ(Field(m, "Format"), "MP3 ");
    EXPECT_EQ(Field(m, "      Bit Rate (kbps)"), "128");

    // Apple Lossless reports the bit depth of the sound it holds.
    const std::string l = Info(alac.string());
    EXPECT_EQ(Field(l, "      Sample Format"), "alac");
    EXPECT_EQ(Field(l, "      Sample Size (b)"), "24");
    EXPECT_TRUE(LeftoverTemporaryFiles().empty());

    // Durations are what the edits produce. One second: the MP3's frames of 1152 and the Apple
    // Lossless packets of 4096 both hold more, which the decoder drops as the edits read the sound.
    Ffmpeg({"-i", wav, "-c:a", "alac", Path("tone.caf")});
    for (const char* file : {"tone.mp3", "tone.caf"}) {
        const std::string report = Info(Path(file));
        EXPECT_EQ(Field(report, "  Duration (s)"), "000:00:01.000") << report;
        EXPECT_EQ(Field(report, "    Media Duration (s)"), "000:00:01.000") << report;
        // A stored result holds one byte a frame after its 42-byte header.
        const std::string snd = SoundStreamOf(Eval(u"Vandrel_Amplify ( $a ; 1 )", {vdhost::makeTextUtf8(Path(file))}));
        EXPECT_EQ(snd.size(), 42u + 44100) << file;
    }
}

TEST_F(SoundInfoTest, EveryAudioTrackIsReportedAsTrackOne) {
    VD_REQUIRE_FFMPEG();
    const std::string mono = Write("mono.wav", SineWav(22050, 1)), stereo = Write("stereo.wav", SineWav(44100, 2));
    const auto both = Data() / "two.mov";
    Ffmpeg({"-i", mono, "-i", stereo, "-map", "0:a", "-map", "1:a", "-c:a", "pcm_s16le", both.string()});
    const std::string report = Info(both.string());
    std::vector<std::string> headings;
    for (const auto& line : Lines(report))
        if (line.rfind("Track", 0) == 0) headings.push_back(line);
    EXPECT_EQ(headings, (std::vector<std::string>{"Track 1", "Track 1"})) << report;
    const size_t second = report.find("Track 1", report.find("Track 1") + 1);
    EXPECT_EQ(Field(report.substr(0, second), "      Number of Channels"), "1");
    EXPECT_EQ(Field(report.substr(second), "      Number of Channels"), "2");
    EXPECT_EQ(Field(report.substr(0, second), "    Media Duration (s)"), "000:00:00.500");
}

TEST_F(SoundInfoTest, SoundsWithoutAFileAndFilesWithoutSound) {
    // A sound held in a container lives in memory only: its format shows as 'lifs'.
    const std::string made = Text(u"Vandrel_GetSoundInfo ( Vandrel_CreateSound ( \"sine\" ; 1 ) )");
    EXPECT_EQ(Field(made, "Format"), "lifs") << made;

    EXPECT_EQ(Info(""), "$-50:Vandrel_GetSoundInfo: The container in argument #1 seems to be empty.");
    EXPECT_EQ(Info((Data() / "missing.wav").string()),
              "$-43:Vandrel_GetSoundInfo: Could not get parameter #1 as sound.");

    VD_REQUIRE_FFMPEG();
    const auto video = Data() / "picture.mp4";
    Ffmpeg({"-f", "lavfi", "-i", "testsrc=d=1:s=32x32", "-c:v", "mpeg4", video.string()});
    EXPECT_EQ(Info(video.string()), "$-2055:Vandrel_GetSoundInfo: Failed to get information for this file.");
}

TEST(SoundInfoReport, AnOverlongReportIsCutNotRefused) {
    TempFolder folder;
    writeFile(folder / "tone.wav", SineWav(100, 2));
    const vd::media::Movie movie = OpenedMovie(folder / "tone.wav");
    std::string full, cut;
    ASSERT_EQ(vd::sound::SoundInfoReport(movie, full), 0);
    ASSERT_EQ(vd::sound::SoundInfoReport(movie, cut, 100), 0);
    ASSERT_GT(full.size(), 100u);
    EXPECT_EQ(cut, full.substr(0, 100));
}

}  // namespace
}  // namespace vdtest
