// Vandrel_GetMetadata and Vandrel_SetMetadata through the host: tags of pictures and sound files
// made here by other tools, written by the plug-in and read back by other tools.
#include "plugin/sound/sound_test_support.h"
#include "plugin/image/image_test_support.h"

#include <support/process.h>

#include <map>

#include <sys/stat.h>

namespace vdtest {
namespace {

namespace fs = std::filesystem;

std::u16string U(const std::string& utf8) { return vdhost::utf8ToUtf16(utf8); }

// Quoted for a calculation.
std::u16string Q(const std::string& text) { return u"\"" + U(text) + u"\""; }

bool Have(const char* program) { return !programOnPath(program).empty(); }

void Exiv2(const std::vector<std::string>& commands, const std::string& file) {
    std::vector<std::string> argv{programOnPath("exiv2")};
    for (const auto& c : commands) argv.push_back("-M" + c);
    argv.push_back(file);
    const auto r = runProcess(argv);
    ASSERT_EQ(r.status, 0) << r.err;
}

// Every tag ffprobe sees in the file (format and stream tags), names in lower case.
std::map<std::string, std::string> ProbedTags(const std::string& file) {
    const auto r = runProcess({programOnPath("ffprobe"), "-v", "error", "-show_entries", "format_tags:stream_tags", "-of",
                               "default=noprint_wrappers=1", file});
    EXPECT_EQ(r.status, 0) << r.err;
    std::map<std::string, std::string> tags;
    for (size_t start = 0, end; (end = r.out.find('\n', start)) != std::string::npos; start = end + 1) {
        const std::string line = r.out.substr(start, end - start);
        const size_t equals = line.find('=');
        if (line.rfind("TAG:", 0) != 0 || equals == std::string::npos) continue;
        std::string name = line.substr(4, equals - 4);
        for (char& c : name) c = char(std::tolower(static_cast<unsigned char>(c)));
        tags[name] = line.substr(equals + 1);
    }
    return tags;
}

class MetadataFunctions : public SoundSessionTest {
protected:
    std::string Get(const std::string& source, const std::string& tail = "") {
        return Text(u"Vandrel_GetMetadata ( " + Q(source) + U(tail) + u" )");
    }
    std::string Set(const std::string& file, const std::vector<std::string>& assignments) {
        std::u16string call = u"Vandrel_SetMetadata ( " + Q(file);
        for (const auto& a : assignments) call += u" ; " + Q(a);
        return Text(call + u" )");
    }
    // A one-second sound made by ffmpeg with its own arguments (codec, tags).
    std::string Sound(const std::string& name, const std::vector<std::string>& options) {
        std::vector<std::string> arguments{"-f", "lavfi", "-i", "sine=frequency=440:duration=1"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        arguments.push_back(Path(name));
        media::Ffmpeg(arguments);
        return Path(name);
    }
    std::string Picture(const std::string& name) {
        media::Ffmpeg({"-f", "lavfi", "-i", "color=c=red:s=16x16", "-frames:v", "1", Path(name)});
        return Path(name);
    }
    static constexpr const char* kOk = "$0:Vandrel_SetMetadata: No error.";
};

TEST_F(MetadataFunctions, ReadsExifIptcAndXmpOfAPictureFromAPathOrAContainer) {
    VD_REQUIRE_FFMPEG();
    const std::string plain = Picture("plain.jpg");
    EXPECT_EQ(Get(plain), "");  // no tags: an empty report
    const std::string jpeg = Picture("camera.jpg");
    const std::vector<std::string> tags{"set Exif.Image.Make Canon", "set Exif.Image.Model Canon EOS 5D",
                                        "set Exif.Photo.ExposureTime Rational 1/250",
                                        "set Exif.Photo.DateTimeOriginal 2021:06:01 12:30:00",
                                        "set Iptc.Application2.Keywords Alpha", "add Iptc.Application2.Keywords Beta",
                                        "set Xmp.dc.creator Jane", "set Xmp.dc.title Hello", "set Exif.Image.Artist Ren\xE9"};  // Latin-1 bytes
    if (Have("exiv2")) {
        Exiv2(tags, jpeg);
    } else {  // the plug-in's own writer makes the fixture
        ASSERT_EQ(Set(jpeg, {"Exif.Image.Make=Canon", "Exif.Image.Model=Canon EOS 5D", "Exif.Photo.ExposureTime=1/250",
                             "Exif.Photo.DateTimeOriginal=2021:06:01 12:30:00", "Iptc.Application2.Keywords=Alpha; Beta",
                             "Xmp.dc.creator=Jane", "Xmp.dc.title=Hello", "Exif.Image.Artist=Ren\xC3\xA9"}),
                  kOk);
    }
    const std::string report = Get(jpeg);
    EXPECT_NE(report.find("EXIF\r  "), std::string::npos) << report;
    EXPECT_NE(report.find("\rIPTC\r  Keywords: Alpha"), std::string::npos) << report;
    EXPECT_NE(report.find("\rXMP\r  dc.creator: Jane"), std::string::npos) << report;
    const FMX_Data reportValue = Eval(u"Vandrel_GetMetadata ( " + Q(jpeg) + u" )");
    EXPECT_EQ(Text(u"Vandrel_ExtractInfo ( $a ; \"EXIF/DateTimeOriginal\" )", {reportValue}), "2021:06:01 12:30:00");
    EXPECT_EQ(Get(jpeg, " ; \"EXIF/ExposureTime\""), "1/250 s");
    EXPECT_EQ(Get(jpeg, " ; \"Exif.Photo.ExposureTime\" ; \"raw\""), "1/250");
    EXPECT_EQ(Get(jpeg, " ; \"Exif.Image.Model\""), "Canon EOS 5D");
    EXPECT_EQ(Get(jpeg, " ; \"Exif.Image.Artist\""), "Ren\xC3\xA9");
    EXPECT_EQ(Get(jpeg, " ; \"XMP/dc.title\""), "Hello");
    EXPECT_EQ(Get(jpeg, " ; \"Xmp.dc.title\" ; \"raw\""), "lang=\"x-default\" Hello");
    if (Have("exiv2")) { EXPECT_EQ(Get(jpeg, " ; \"IPTC/Keywords\""), "Alpha; Beta"); }

    const std::string notThere = "$-2026:Vandrel_GetMetadata: The tag \"Exif.Photo.FNumber\" is not in this file.";
    EXPECT_EQ(Get(jpeg, " ; \"Exif.Photo.FNumber\""), notThere);
    EXPECT_EQ(Text(u"Vandrel_GetLastError"), notThere);
    EXPECT_EQ(Get(jpeg, " ; \"EXIF/Make\" ; \"pretty\""),
              "$-50:Vandrel_GetMetadata: The format must be \"interpreted\" or \"raw\".");
    EXPECT_EQ(Get(Path("none.jpg")), "$-43:Vandrel_GetMetadata: Could not find the file named by argument #1.");

    // The same picture embedded in a container goes through a private temporary file, removed after.
    const FMX_Data embedded = ContainerWith("JPEG", readFile(jpeg));
    EXPECT_EQ(Text(u"Vandrel_GetMetadata ( $a ; \"Exif.Image.Make\" )", {embedded}), "Canon");
    EXPECT_EQ(Text(u"Vandrel_GetMetadata ( $a )", {embedded}), report);
    EXPECT_TRUE(LeftoverTemporaryFiles().empty());
}

// A photograph a Debian package ships, when one with EXIF is installed: our values are exiv2's.
TEST_F(MetadataFunctions, ReadsACameraPictureAsExiv2Does) {
    if (!Have("exiv2")) GTEST_SKIP() << "the exiv2 program is not installed";
    std::error_code ec;
    for (fs::recursive_directory_iterator it("/usr/share", fs::directory_options::skip_permission_denied, ec), end;
         it != end; it.increment(ec)) {
        if (ec) break;
        const std::string ext = it->path().extension();
        if (ext != ".jpg" && ext != ".JPG" && ext != ".jpeg") continue;
        const auto model = runProcess({programOnPath("exiv2"), "-q", "-Pt", "-g", "Exif.Image.Model", it->path()});
        if (model.status != 0 || model.out.empty()) continue;
        std::string expected = model.out.substr(0, model.out.find('\n'));
        EXPECT_EQ(Get(it->path(), " ; \"Exif.Image.Model\""), expected) << it->path();
        EXPECT_NE(Get(it->path()).find("EXIF\r"), std::string::npos);
        return;
    }
    GTEST_SKIP() << "no picture with EXIF under /usr/share";
}

TEST_F(MetadataFunctions, Id3TagsWrittenAsATagEditorWouldAndReadByFfprobe) {
    VD_REQUIRE_FFMPEG();
    const std::string title = "Gr\xC3\xBC\xC3\x9F" "e \xE6\x9D\xB1\xE4\xBA\xAC";  // Grüße 東京
    // No tag at all: a new ID3v2.4 tag in UTF-8, and ID3v1 in Latin-1 with "?" for what it cannot hold.
    const std::string mp3 = Sound("new.mp3", {"-c:a", "libmp3lame", "-id3v2_version", "0", "-write_id3v1", "0"});
    ASSERT_EQ(Set(mp3, {"ID3v2.TIT2=" + title, "ID3v2.TPE1=Ren\xC3\xA9", "ID3v1.Title=" + title, "ID3v1.Year=1999"}), kOk);
    const std::string bytes = readFile(mp3);
    ASSERT_EQ(bytes.substr(0, 4), std::string("ID3\x04", 4));
    const size_t frame = bytes.find("TIT2");
    ASSERT_NE(frame, std::string::npos);
    EXPECT_EQ(bytes[frame + 10], '\x03');  // UTF-8
    const std::string v1 = bytes.substr(bytes.size() - 128);
    EXPECT_EQ(v1.substr(0, 3 + 9), std::string("TAG" "Gr\xFC\xDF" "e ??\0", 12));
    EXPECT_EQ(ProbedTags(mp3)["title"], title);
    EXPECT_EQ(ProbedTags(mp3)["artist"], "Ren\xC3\xA9");
    EXPECT_EQ(Get(mp3, " ; \"ID3v1/Title\""), "Gr\xC3\xBC\xC3\x9F" "e ??");
    EXPECT_EQ(Get(mp3, " ; \"ID3v1.Year\""), "1999");

    // An ID3v2.3 tag stays 2.3, its new text in UTF-16; the tags not named stay as they were.
    const std::string old = Sound("old.mp3", {"-c:a", "libmp3lame", "-id3v2_version", "3", "-metadata", "title=Old",
                                              "-metadata", "album=Kept", "-metadata", "genre=(17)"});
    EXPECT_EQ(Get(old, " ; \"ID3v2.TIT2\""), "Old");
    ASSERT_EQ(Set(old, {"ID3v2.TIT2=" + title}), kOk);
    const std::string oldBytes = readFile(old);
    EXPECT_EQ(oldBytes.substr(0, 4), std::string("ID3\x03", 4));
    EXPECT_EQ(oldBytes[oldBytes.find("TIT2") + 10], '\x01');  // UTF-16 with its byte order mark
    EXPECT_EQ(ProbedTags(old)["title"], title);
    EXPECT_EQ(ProbedTags(old)["album"], "Kept");
    EXPECT_EQ(Get(old, " ; \"ID3v2/TIT2\""), title);
    // An empty value removes the tag.
    ASSERT_EQ(Set(old, {"ID3v2.TALB="}), kOk);
    EXPECT_EQ(ProbedTags(old).count("album"), 0u);
    EXPECT_EQ(Get(old, " ; \"ID3v2.TALB\""), "$-2026:Vandrel_GetMetadata: The tag \"ID3v2.TALB\" is not in this file.");
}

TEST_F(MetadataFunctions, VorbisCommentsOfOggAndFlacWrittenAndReadByFfprobe) {
    VD_REQUIRE_FFMPEG();
    const std::string title = "\xC3\x86" "b\xC3\xB8 \xE6\x9D\xB1";
    const std::string ogg = Sound("a.ogg", {"-c:a", "libvorbis", "-metadata", "album=Kept"});
    const std::string flac = Sound("a.flac", {"-c:a", "flac", "-metadata", "album=Kept"});
    for (const std::string& file : {ogg, flac}) {
        ASSERT_EQ(Set(file, {"Vorbis.TITLE=" + title, "Vorbis.artist=Jane"}), kOk) << file;
        auto probed = ProbedTags(file);
        EXPECT_EQ(std::make_tuple(probed["title"], probed["artist"], probed["album"]),
                  std::make_tuple(title, std::string("Jane"), std::string("Kept"))) << file;
        const FMX_Data report = Eval(u"Vandrel_GetMetadata ( " + Q(file) + u" )");
        EXPECT_EQ(Text(u"Vandrel_ExtractInfo ( $a ; \"Vorbis/TITLE\" )", {report}), title) << file;
    }
}

TEST_F(MetadataFunctions, AWriteThatFailsLeavesTheFileAsItWas) {
    VD_REQUIRE_FFMPEG();
    const std::string mp3 = Sound("song.mp3", {"-c:a", "libmp3lame", "-metadata", "title=Before"});
    const std::string before = readFile(mp3);
    // A key refused after one that was accepted: nothing is saved.
    EXPECT_EQ(Set(mp3, {"ID3v2.TIT2=After", "Bogus.Tag=1"}).rfind("$-50:Vandrel_SetMetadata: Could not set the tags.", 0), 0u);
    EXPECT_EQ(Set(mp3, {"ID3v2.TIT2"}), "$-50:Vandrel_SetMetadata: Argument #2 is not \"key=value\".");
    EXPECT_EQ(readFile(mp3), before);

    // A folder that takes no new file (its owner has no write permission; for root, immutable).
    ASSERT_EQ(::chmod(Data().c_str(), 0555), 0);
    const bool root = ::geteuid() == 0;
    const bool immutable = root && runProcess({programOnPath("chattr"), "+i", Data().string()}).status == 0;
    const std::string answer = Set(mp3, {"ID3v2.TIT2=After"});
    if (immutable) runProcess({programOnPath("chattr"), "-i", Data().string()});
    ::chmod(Data().c_str(), 0755);
    if (root && !immutable) GTEST_SKIP() << "root writes into any folder here, and chattr cannot stop it";
    EXPECT_EQ(answer.rfind("$-54:Vandrel_SetMetadata: Could not make the copy beside the file", 0), 0u) << answer;
    EXPECT_EQ(readFile(mp3), before);
    for (const std::string& name : media::FolderEntries(Data())) EXPECT_NE(name[0], '.') << "a copy was left: " << name;
}

}  // namespace
}  // namespace vdtest
