#include "util/time_text.h"

#include <cmath>
#include <limits>
#include <random>
#include <string>

#include <gtest/gtest.h>

namespace {

using namespace vd::util;

TEST(TimeTextTest, ValidAndInvalidTexts) {
    struct Case { const char* text; uint32_t fixed; };
    const Case cases[] = {
        {".25", 0x4000}, {"2.", 0x20000},
        {"0.0000152587890625", 1},            // exactly 1/65536
        {"0.0000152587890624999999999", 0},   // just below it
        {"0.99999999999999999999", 0xFFFF}, {"01:02:03.5", (3723u << 16) + 0x8000},
        {"90:00", 5400u << 16},               // the first field may exceed its clock range
        {"  12\t", 12u << 16}, {"32767.9999847412109375", 0x7FFFFFFF},
        {"32767.99998474121093749", 0x7FFFFFFE}, {"99999999999999999999999999", kMaxFixedTime},
    };
    for (const Case& c : cases) {
        uint32_t fixed = 12345;
        ASSERT_EQ(ParseTimeText(c.text, fixed), 0) << c.text;
        EXPECT_EQ(fixed, c.fixed) << c.text;
    }
    const char* texts[] = {" ", "-0", "+1", "1e3", "1:60", "1:5:60", "1:2:3:4", ":30", "1:", "1.5:30", ".", "1.2.3",
                           "1 :30", "1,5", "١"};
    for (const char* text : texts) {
        uint32_t fixed = 777;
        EXPECT_EQ(ParseTimeText(text, fixed), -50) << text;
        EXPECT_EQ(fixed, 777u) << text;
    }
}

TEST(TimeTextTest, SignedVariantReportsTheSign) {
    struct Case { const char* text; uint32_t magnitude; bool negative; };
    const Case cases[] = {{"-0", 0, true}, {"3.5", 0x38000, false}, {" -1:00 ", 60u << 16, true},
                          {"-40000", kMaxFixedTime, true}};
    for (const Case& c : cases) {
        SignedFixedTime time;
        ASSERT_EQ(ParseSignedTimeText(c.text, time), 0) << c.text;
        EXPECT_EQ(time.magnitude, c.magnitude) << c.text;
        EXPECT_EQ(time.negative, c.negative) << c.text;
    }
    SignedFixedTime time;
    EXPECT_EQ(ParseSignedTimeText("- 1", time), -50);
    EXPECT_EQ(ParseSignedTimeText("-", time), -50);
}

TEST(TimeTextTest, NumbersSaturateAndNegativesNeedTheSignedVariant) {
    struct Case { double seconds; uint32_t fixed; };
    const Case cases[] = {{0.1, 6553}, {32767.99998, 0x7FFFFFFE}, {32768.0, kMaxFixedTime},
                          {std::numeric_limits<double>::infinity(), kMaxFixedTime}};
    for (const Case& c : cases) {
        uint32_t fixed = 0;
        ASSERT_EQ(TimeFromSeconds(c.seconds, fixed), 0) << c.seconds;
        EXPECT_EQ(fixed, c.fixed) << c.seconds;
    }
    uint32_t fixed = 0;
    EXPECT_EQ(TimeFromSeconds(-0.5, fixed), -50);
    EXPECT_EQ(TimeFromSeconds(std::nan(""), fixed), -50);

    SignedFixedTime time;
    ASSERT_EQ(SignedTimeFromSeconds(-2.5, time), 0);
    EXPECT_EQ(time.magnitude, 0x28000u);
    EXPECT_TRUE(time.negative);
    EXPECT_EQ(SignedTimeFromSeconds(std::nan(""), time), -50);
}

TEST(TimeTextTest, TextAndNumberAgreeOnRandomTimes) {
    std::mt19937 random(3);
    for (int i = 0; i < 2000; ++i) {
        const uint32_t millis = random() % 40000000;
        const std::string text = std::to_string(millis / 1000) + "." + std::to_string(1000 + millis % 1000).substr(1);
        uint32_t fromText = 0;
        ASSERT_EQ(ParseTimeText(text, fromText), 0) << text;
        // Exact: floor(millis * 65536 / 1000), or saturation.
        const uint64_t exact = uint64_t{millis} * 65536 / 1000;
        EXPECT_EQ(fromText, exact >= (uint64_t{1} << 31) ? kMaxFixedTime : exact) << text;
        // The clock form of the same time reads the same.
        const uint32_t whole = millis / 1000;
        const std::string clock = std::to_string(whole / 3600) + ":" + std::to_string(whole / 60 % 60) + ":" +
                                  std::to_string(whole % 60) + text.substr(text.find('.'));
        uint32_t fromClock = 0;
        ASSERT_EQ(ParseTimeText(clock, fromClock), 0) << clock;
        EXPECT_EQ(fromClock, fromText) << clock;
    }
    EXPECT_EQ(SecondsToFixed(-1.0), 0u);
}

}  // namespace
