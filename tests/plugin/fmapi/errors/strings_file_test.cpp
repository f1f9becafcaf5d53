// Reading the localization table's file format.
#include "fmapi/errors/strings_file.h"

#include <gtest/gtest.h>

namespace vd {
namespace {

TEST(StringsFile, EntriesCommentsAndEscapes) {
    auto table = ParseStringsFile(
        "\xEF\xBB\xBF/* header\n spanning lines */\n"
        "\"String1\" = \"Vandrel\";\n"
        "// a line comment \"String9\" = \"no\";\n"
        "\"String2\"=\"say \\\"hi\\\" \\\\ back\\nslash\";  \"String3\" =  \"Gr\xC3\xBC\xC3\x9F\" ;\n"
        "\"String1\" = \"later wins\";\n");
    EXPECT_TRUE(table.complete);
    EXPECT_EQ(table.entries.size(), 3u);
    EXPECT_EQ(table.entries.at("String1"), "later wins");
    EXPECT_EQ(table.entries.at("String2"), "say \"hi\" \\ back\nslash");
    EXPECT_EQ(table.entries.at("String3"), "Gr\xC3\xBC\xC3\x9F");
    EXPECT_EQ(table.entries.count("String9"), 0u);
}

TEST(StringsFile, MalformedTextKeepsWhatCameBefore) {
    const char* broken[] = {
        "\"a\" = \"1\"; \"b\" = \"2\"",        // no semicolon
        "\"a\" = \"1\"; \"b\" = \"unterminated", // quote never closes
        "\"a\" = \"1\"; \"b\" = \"ends in \\",  // escape at the very end
    };
    for (const char* text : broken) {
        auto table = ParseStringsFile(text);
        EXPECT_FALSE(table.complete) << text;
        ASSERT_EQ(table.entries.size(), 1u) << text;
        EXPECT_EQ(table.entries.at("a"), "1");
    }
    EXPECT_TRUE(ParseStringsFile("").complete);
    EXPECT_TRUE(ParseStringsFile("  // only a comment").entries.empty());
}

}  // namespace
}  // namespace vd
