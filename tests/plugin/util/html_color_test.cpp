#include "util/html_color.h"

#include <string>

#include <gtest/gtest.h>

namespace {

using vd::util::ParseHtmlColor;
using vd::util::RgbColor;

TEST(HtmlColorTest, ValidAndInvalidTexts) {
    struct Case { const char* text; RgbColor color; };
    const Case cases[] = {
        {"#aBcDeF", {0xAB, 0xCD, 0xEF}}, {"#F80", {0xFF, 0x88, 0x00}}, {" #000000 ", {0, 0, 0}},
        {"Silver", {0xC0, 0xC0, 0xC0}},  {"AqUa", {0, 0xFF, 0xFF}}, {"#123456", {0x12, 0x34, 0x56}},
        {"789abc", {0x78, 0x9A, 0xBC}},  // six digits need no '#'
    };
    for (const Case& c : cases) {
        RgbColor color{1, 2, 3};
        ASSERT_EQ(ParseHtmlColor(c.text, color), 0) << c.text;
        EXPECT_EQ(color, c.color) << c.text;
    }
    const char* texts[] = {"", "fff", "#ff80", "#ff80000", "#12345g", "grey", "redd", "#-12345", "##ff8000", "#ff 800"};
    for (const char* text : texts) {
        RgbColor color{1, 2, 3};
        EXPECT_EQ(ParseHtmlColor(text, color), -50) << text;
        EXPECT_EQ(color, (RgbColor{1, 2, 3})) << text;
    }
}

}  // namespace
