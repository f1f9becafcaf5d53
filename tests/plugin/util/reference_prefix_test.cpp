#include "util/reference_prefix.h"

#include <gtest/gtest.h>

namespace {

using vd::util::AppendPlatformPrefix;
using vd::util::ReferencePrefix;

TEST(ReferencePrefixTest, FirstMatchingWordWinsAndOnlyTheWordIsCompared) {
    struct Case { const char* text; const char* word; };
    const Case cases[] = {
        {"moviemac:/Users/a.mov", "moviemac"}, {"imagewin:/C:/a.jpg", "imagewin"}, {"filenet:/s/a", "filenet"},
        // The loose match: the character after the word is the caller's business.
        {"moviemacX...", "moviemac"},          {"movieX", "movie"},                {"filemaker", "file"},
        // No word: case matters, and the word must come first.
        {"Movie:a", ""},                       {" file:a", ""},                    {"mov", ""},
    };
    for (const Case& c : cases) EXPECT_EQ(ReferencePrefix(c.text), c.word) << c.text;
    // The platform prefix is the word and "mac:".
    std::string text = "x";
    EXPECT_TRUE(AppendPlatformPrefix(text, "image"));
    EXPECT_EQ(text, "ximagemac:");
    EXPECT_FALSE(AppendPlatformPrefix(text, ""));
    EXPECT_EQ(text, "ximagemac:");
}

}  // namespace
