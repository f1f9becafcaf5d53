// Single values out of report texts, by line number and by label path.
#include "sound/information/information_extraction.h"
#include "sound_test_support.h"

namespace vdtest {
namespace {

using vd::sound::ExtractInfo;

// The shape of a sound report: two blanks of indentation per level, CR between lines.
const std::string kReport =
    "File: /tmp/a.wav\r"
    "Format: WAVE\r"
    "Track 1\r"
    "  Enabled: yes\r"
    "  Media\r"
    "    Time Scale: 44100\r"
    "    Sample Description 1\r"
    "      Format: sowt\r"
    "      Sample Rate (Hz): 44100\r"
    "      Channels: 2\r"
    "Track 1\r"
    "  Media\r"
    "    Sample Description 1\r"
    "      Sample Rate (Hz): 22050\r"
    "      Bits:16\r"
    "  Note without colon";

// A number counts (0 or nothing) or picks a line; a label path descends by indentation, units dropped.
TEST(ExtractInfo, LineNumbersAndLabelPaths) {
    struct Case { const char* key; int32_t code; const char* value; } cases[] = {
        {"", 0, "16"}, {"\t 0 ", 0, "16"}, {"1", 0, "/tmp/a.wav"}, {"16", 0, "  Note without colon"},
        {"17", -1, "Could not copy indexed line."},  {"99999999999", -50, ""},
        {"Track 1/Media/Sample Description 1/Sample Rate (Hz)", 0, "44100"},
        {" Track 1/Media/Sample Description 1/Sample Rate (kHz)  ", 0, "44100"},
        {"Track 1/Enabled", 0, "yes"},
        // The first Track 1 has no Bits: the search goes on at the first level and finds the second.
        {"Track 1/Media/Sample Description 1/Bits", 0, "16"},
        {"Track 1/Note without colon", 0, "Note without colon"},
        {"track 1/Enabled", -43, "Requested key was not found."},  // labels compare case-sensitively
        {"Enabled", -43, "Requested key was not found."},  // depth 2 items are not at depth 1
        {"Track 1/(Hz)", -2, "Wrong key."},
        {"Track 1//Enabled", -1, "Wrong line or key."},
    };
    for (const auto& c : cases) {
        auto r = ExtractInfo(kReport, c.key);
        EXPECT_EQ(r.code, c.code) << c.key;
        EXPECT_EQ(r.value, c.value) << c.key;
    }
    EXPECT_EQ(ExtractInfo("", "").value, "1");  // an empty text has one line
    EXPECT_EQ(ExtractInfo("a\rb\r", "0").value, "3");
}

using ExtractInfoFunction = SoundSessionTest;

TEST_F(ExtractInfoFunction, AnswersValuesOrStatusTextsThroughTheHost) {
    EXPECT_EQ(Text(u"Vandrel_ExtractInfo ( \"a: 1¶b:   2\" ; \"b\" )"), "2");
    EXPECT_EQ(Text(u"Vandrel_ExtractInfo ( \"a: 1\" ; \"c\" )"), "$-43:Vandrel_ExtractInfo: Requested key was not found.");
    EXPECT_EQ(Text(u"Vandrel_GetLastError"), "$-43:Vandrel_ExtractInfo: Requested key was not found.");
    EXPECT_EQ(Text(u"Vandrel_ExtractInfo ( \"a\" ; \"99999999999\" )"), "$-50:Vandrel_ExtractInfo: Wrong parameter(s).");
    EXPECT_EQ(Text(u"Vandrel_ExtractInfo ( \"a: 1\" ; 1 ) & Vandrel_GetLastError"), "1$0:Vandrel_ExtractInfo: No error.");
}

}  // namespace
}  // namespace vdtest
