// Converting sounds into files of every output format, through the host as a database would.
#include "plugin/sound/sound_test_support.h"

#include "platform/media/sound_converter.h"
#include "platform/media/export_settings.h"
#include "platform/media/exporters.h"
#include "platform/media/sound_export.h"
#include "util/settings_text.h"

#include <map>
#include <sstream>
#include <tuple>

namespace vdtest {
namespace {

struct Probe {
    std::string codec;
    int rate = 0;
    int channels = 0;
    double duration = 0;
};

// What ffprobe says of a file's first sound stream.
Probe ProbeFile(const std::string& path) {
    const auto r = runProcess({programOnPath("ffprobe"), "-v", "error", "-select_streams", "a:0", "-show_entries",
                               "stream=codec_name,sample_rate,channels:format=duration", "-of", "default=nw=1", path});
    Probe probe;
    std::istringstream lines(r.out);
    for (std::string line; std::getline(lines, line);) {
        const size_t eq = line.find('=');
        if (eq == std::string::npos) continue;
        const std::string key = line.substr(0, eq), value = line.substr(eq + 1);
        if (key == "codec_name") probe.codec = value;
        if (key == "sample_rate") probe.rate = std::atoi(value.c_str());
        if (key == "channels") probe.channels = std::atoi(value.c_str());
        if (key == "duration") probe.duration = std::atof(value.c_str());
    }
    return probe;
}

class ConversionTest : public SoundSessionTest {
protected:
    ConversionTest() : script_("VANDREL_UI_SCRIPT", Path("answers.txt")) { Answer("ok"); }
    void Answer(const std::string& lines) { Write("answers.txt", lines + "\n"); }

    // The settings text the dialog answers for the format with the script's answer.
    std::string Settings(const std::string& format, const std::string& answer = "ok") {
        Answer(answer);
        return Text(u"Vandrel_SoundFormatDialog ( \"" + vdhost::utf8ToUtf16(format) + u"\" )");
    }
    // The converted sound's information, or the conversion's status text.
    std::string Convert(const std::string& sound, const std::string& target, const std::string& format,
                        const std::string& settings) {
        const FMX_Data converted =
            Eval(u"Vandrel_ConvertSound ( $a ; $b ; $c ; \"" + vdhost::utf8ToUtf16(settings) + u"\" )",
                 {vdhost::makeTextUtf8(sound), vdhost::makeTextUtf8(target), vdhost::makeTextUtf8(format)});
        if (!vdhost::isContainer(converted)) return vdhost::utf8Of(converted);
        return Text(u"Vandrel_GetSoundInfo ( $a )", {converted});
    }

    ScopedEnv script_;
};

TEST_F(ConversionTest, ListsEveryFormatOnceInCodeOrder) {
    EXPECT_EQ(Text(u"Vandrel_ListSoundOutputFormats"),
              "41494646|AIFF|AIFF|to AIFF sound file (linear PCM, big-endian)\r"
              "464C4143|FLAC|FLAC|to FLAC sound file (lossless)\r"
              "4D344120|M4A |AAC Audio (M4A)|to MPEG-4 audio file (AAC)\r"
              "4D503320|MP3 |MP3|to MP3 sound file (LAME)\r"
              "4D6F6F56|MooV|QuickTime Movie|to QuickTime movie holding the sound (linear PCM)\r"
              "4F676720|Ogg |Ogg Vorbis|to Ogg Vorbis sound file\r"
              "4F707573|Opus|Opus|to Ogg Opus sound file\r"
              "554C4157|ULAW|Sun Audio (mu-law)|to Sun AU sound file (8-bit mu-law)\r"
              "57415645|WAVE|WAVE|to WAVE sound file (linear PCM, little-endian)\r"
              "63616666|caff|Core Audio Format|to Core Audio Format file (linear PCM)\r"
              "6D706734|mpg4|MPEG-4|to MPEG-4 file (AAC audio)");
}

TEST_F(ConversionTest, FormatTextsAreFourCharactersOrEightHexDigits) {
    const std::string wave = Settings("WAVE");
    EXPECT_TRUE(wave.starts_with("<hex>") && wave.ends_with("</hex>")) << wave;
    EXPECT_EQ(Settings("57415645"), wave);
    EXPECT_EQ(Settings("4d503320"), Settings("MP3 "));  // movie and sound exporters alike
    for (const char* bad : {"WAV", "5741564", "WAVES", "5741564G", ""})
        EXPECT_EQ(Settings(bad), "$-50:Vandrel_SoundFormatDialog: Wrong output format.") << bad;
    EXPECT_EQ(Settings("XXXX"), "$-2005:Vandrel_SoundFormatDialog: Export component not found.");
    EXPECT_EQ(Settings("MP3 ", "cancel"), "$-128:Vandrel_SoundFormatDialog: Operation canceled by the user.");
    EXPECT_TRUE(Settings("MP3 ", "ok bitrate=123").starts_with("$-50:Vandrel_SoundFormatDialog: ")) << "not offered";
}

// Every exporter, from a 2-second stereo WAV, written with its default settings.
TEST_F(ConversionTest, EveryFormatWritesAFileItsReadersPlay) {
    VD_REQUIRE_FFMPEG();
    const std::string source = Write("source.wav", media::SineWav(88200, 2));
    const std::map<std::string, std::pair<std::string, int>> expected{
        {"AIFF", {"pcm_s16be", 44100}}, {"FLAC", {"flac", 44100}},      {"M4A ", {"aac", 44100}},
        {"MP3 ", {"mp3", 44100}},       {"MooV", {"pcm_s16be", 44100}}, {"Ogg ", {"vorbis", 44100}},
        {"Opus", {"opus", 48000}},      {"ULAW", {"pcm_mulaw", 44100}}, {"WAVE", {"pcm_s16le", 44100}},
        {"caff", {"pcm_s16be", 44100}}, {"mpg4", {"aac", 44100}}};
    for (const auto& [format, codec] : expected) {
        SCOPED_TRACE(format);
        const std::string target = Path("out-" + format.substr(0, 3) + ".snd");
        const std::string info = Convert(source, target, format, Settings(format));
        EXPECT_NE(info.find("Duration (s): 000:00:02.0"), std::string::npos) << info;
        const Probe probe = ProbeFile(target);
        EXPECT_EQ(std::make_tuple(probe.codec, probe.rate, probe.channels), std::make_tuple(codec.first, codec.second, 2));
        // Within one frame of the encoder (2048 samples covers AAC's priming and Opus's pre-skip).
        EXPECT_NEAR(probe.duration, 2.0, 2048.0 / codec.second);
    }
    EXPECT_TRUE(LeftoverTemporaryFiles().empty());
}

TEST_F(ConversionTest, SettingsTextsReproduceTheSameFile) {
    VD_REQUIRE_FFMPEG();
    const std::string source = Write("source.wav", media::SineWav(44100, 2));
    struct Case {
        const char* format;
        const char* answer;
        const char* codec;
        int rate, channels;
    };
    for (const Case c : {Case{"MP3 ", "ok rate=22050 channels=mono bitrate=64000", "mp3", 22050, 1},
                         Case{"FLAC", "ok size=24 level=8", "flac", 44100, 2},
                         Case{"WAVE", "ok size=8 rate=11025", "pcm_u8", 11025, 2},
                         Case{"Ogg ", "ok quality=2 channels=mono", "vorbis", 44100, 1}}) {
        SCOPED_TRACE(c.format);
        const std::string settings = Settings(c.format, c.answer);
        Convert(source, Path("first"), c.format, settings);
        Convert(source, Path("second"), c.format, settings);
        EXPECT_TRUE(readFile(Data() / "first") == readFile(Data() / "second"));
        const Probe probe = ProbeFile(Path("first"));
        EXPECT_EQ(std::make_tuple(probe.codec, probe.rate, probe.channels), std::make_tuple(std::string(c.codec), c.rate, c.channels));
    }
}

TEST_F(ConversionTest, ReadsEveryKindOfSound) {
    VD_REQUIRE_FFMPEG();
    const std::string wav = Write("source.wav", media::SineWav(44100, 2));
    const std::string mp3 = Settings("MP3 ");
    const std::vector<std::pair<std::string, std::vector<std::string>>> inputs{
        {"in.mp3", {"-c:a", "libmp3lame"}}, {"in.m4a", {"-c:a", "aac"}}, {"in.flac", {"-c:a", "flac"}},
        {"in.aiff", {}}, {"in8.wav", {"-c:a", "pcm_u8"}}, {"in24.wav", {"-c:a", "pcm_s24le"}}};
    for (const auto& [name, codec] : inputs) {
        std::vector<std::string> arguments{"-i", wav};
        arguments.insert(arguments.end(), codec.begin(), codec.end());
        arguments.push_back(Path(name));
        media::Ffmpeg(arguments);
        const std::string info = Convert(Path(name), "converted.mp3", "MP3 ", mp3);
        EXPECT_NE(info.find("Duration (s): 000:00:01.0"), std::string::npos) << name << info;
        EXPECT_NEAR(ProbeFile(Path("converted.mp3")).duration, 1.0, 0.05) << name;
    }
    // A sound kept in a field: the container's own "snd " stream, 8-bit mono.
    const FMX_Data tone = Eval(u"Vandrel_CreateSound ( \"sine\" ; 1.5 ; \"A4\" )");
    Answer("ok");
    const std::string info = vdhost::utf8Of(Eval(u"Vandrel_GetSoundInfo ( Vandrel_ConvertSound ( $a ; \"tone.flac\" ; \"FLAC\" ) )", {tone}));
    EXPECT_NE(info.find("Duration (s): 000:00:01.5"), std::string::npos) << info;
    EXPECT_EQ(ProbeFile(Path("tone.flac")).channels, 1);
}

TEST_F(ConversionTest, AFailedOrCancelledConversionLeavesTheTargetAsItWas) {
    const std::string source = Write("source.wav", media::SineWav(4410, 2));
    const std::string before = "an older file";
    const std::string target = Write("kept.wav", before);
    const std::string mp3 = Settings("MP3 ");
    const std::string failed = "$-50:Vandrel_ConvertSound: Could not convert sound to the desired format.";
    EXPECT_EQ(Convert(source, target, "WAVE", mp3), failed) << "settings of another exporter";
    EXPECT_EQ(Convert(source, target, "WAV", mp3), failed);
    EXPECT_EQ(Convert(source, target, "WAVE", "<hex>00</hex>"), "$-50:Vandrel_ConvertSound: Could not resolve hex.");
    // Settings the encoder refuses once the file is begun: an Opus bit rate of 100 bit/s.
    std::string refused;
    ASSERT_EQ(vd::util::SettingsToHexText(
                  vd::media::ExportSettingsBytes({vd::media::FourCC("Opus"), 0, 0, 0, 100, -1, -1}), refused),
              0);
    EXPECT_TRUE(Convert(source, target, "Opus", refused).ends_with(": Could not convert sound to the desired format."));
    Answer("cancel");
    EXPECT_EQ(Text(u"Vandrel_ConvertSound ( $a ; $b ; \"WAVE\" )", {vdhost::makeTextUtf8(source), vdhost::makeTextUtf8(target)}),
              "$-128:Vandrel_ConvertSound: Operation canceled by the user.");
    EXPECT_EQ(readFile(Data() / "kept.wav"), before);
    EXPECT_EQ(Convert(source, "no-such-folder/x.wav", "WAVE", Settings("WAVE")),
              "$-43:Vandrel_ConvertSound: Could not find input file.");
    EXPECT_TRUE(LeftoverTemporaryFiles().empty());
    std::vector<std::string> written;
    for (const auto& name : media::FolderEntries(Data()))
        if (name != "source.wav" && name != "kept.wav" && name != "answers.txt" && name.find("Base") != 0) written.push_back(name);
    EXPECT_TRUE(written.empty()) << written.front();
}

// The converted sound is decoded while it is encoded; what the result holds must be what a
// reader of the written file hears, sample for sample.
TEST_F(ConversionTest, TheResultIsTheSoundOfTheWrittenFile) {
    VD_REQUIRE_FFMPEG();
    const vd::media::Movie source = OpenedMovie(Write("source.wav", media::SineWav(30000, 2)));
    for (const char* format : {"AIFF", "FLAC", "M4A ", "MP3 ", "MooV", "Ogg ", "Opus", "ULAW", "WAVE", "caff", "mpg4"}) {
        vd::media::ExportSettings settings = vd::media::DefaultExportSettings(vd::media::FourCC(
            {format[0], format[1], format[2], format[3], '\0'}));
        for (const int32_t rate : {44100, 22050}) {  // made while encoding, and from the written file
            const std::string target = Path("written");
            std::vector<uint8_t> fromResult{1, 2, 3}, fromFile{1, 2, 3};
            const vd::media::StoredSoundRequest stored{rate, 1u << 30, &fromResult};
            ASSERT_EQ(vd::media::ExportSound(source, settings, target, &stored), 0) << format;
            const vd::media::Movie written = OpenedMovie(target);
            ASSERT_EQ(vd::media::ConvertToMono8(written.FirstSoundTrack()->media, rate, 1u << 30, fromFile), 0);
            EXPECT_TRUE(fromResult == fromFile) << format << " " << rate << ": " << fromResult.size() << " against "
                                                << fromFile.size();
        }
    }
}

TEST(ExportSettingsTest, BytesRoundTripAndOthersAreRefused) {
    const vd::media::ExportSettings settings{vd::media::FourCC("MP3 "), 22050, 1, 0, 0, 3, -1};
    std::vector<uint8_t> bytes = vd::media::ExportSettingsBytes(settings);
    ASSERT_EQ(bytes.size(), vd::media::kExportSettingsSize);
    vd::media::ExportSettings back;
    ASSERT_EQ(vd::media::ExportSettingsFromBytes(bytes, back), 0);
    EXPECT_EQ(back, settings);
    bytes[4] = 9;  // a layout version this build does not know
    EXPECT_EQ(vd::media::ExportSettingsFromBytes(bytes, back), -50);
    EXPECT_EQ(vd::media::ExportSettingsFromBytes({}, back), -50);
}

}  // namespace
}  // namespace vdtest
