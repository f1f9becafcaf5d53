#include "util/line_break_escape.h"

#include <random>
#include <string>

#include <gtest/gtest.h>

namespace {

using vd::util::EscapeLineBreaks;
using vd::util::UnescapeLineBreaks;

TEST(LineBreakEscapeTest, EscapedTextHasNoLineBreaksAndComesBackWhole) {
    std::mt19937 random(31);
    // Mostly the characters that matter, so that "&#", "&&#", "#13;" and the like occur often.
    const std::string alphabet = "&#;\r\n0123456789x ab";
    for (int round = 0; round < 2000; ++round) {
        std::string text(random() % 200, ' ');
        for (char& c : text) {
            c = random() % 4 == 0 ? static_cast<char>(1 + random() % 255) : alphabet[random() % alphabet.size()];
        }
        const std::string escaped = EscapeLineBreaks(text);
        EXPECT_EQ(escaped.find_first_of("\r\n"), std::string::npos);
        EXPECT_EQ(UnescapeLineBreaks(escaped), text);
    }
}

TEST(LineBreakEscapeTest, EscapesTheFourCharacters) {
    EXPECT_EQ(EscapeLineBreaks("a\rb\nc&d#e"), "a&#13;b&#10;c&#38;d&#35;e");
}

TEST(LineBreakEscapeTest, DecoderEdgeInputs) {
    struct Case {
        std::string in;
        std::string out;
    };
    const Case cases[] = {
        {"&#65", "A"},              // the ";" is optional
        {"&#65;;", "A;"},           // only one ";" belongs to the reference
        {"&#256;", "?"},            // no single byte
        {"&#99999999999999999999;", "?"},
        {std::string("&#0;x", 5), std::string("\0x", 2)},
        {"&#x41;", "&#x41;"},       // hexadecimal references are not ours
        {"&#;", "&#;"},
        {"#13;", "#13;"},
        {"&&#65;", "&A"},
        {"&#&#65;", "&#A"},
        {"a&#38;#35;b", "a&#35;b"},  // decoded once, not again
    };
    for (const Case& c : cases) EXPECT_EQ(UnescapeLineBreaks(c.in), c.out) << c.in;
}

}  // namespace
