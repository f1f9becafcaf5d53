
#include <gtest/gtest.h>

#include "plugin/plugin_test_support.h"
#include "util/date_text.h"
#include "util/duration_text.h"

namespace {

using vd::util::FormatDateTime;
using vd::util::FormatDuration;

TEST(DurationTextTest, Layout) {
    struct Case { int32_t value; int32_t scale; const char* text; };
    const Case cases[] = {
        {1500, 1000, "000:00:01.500"}, {44100 * 61, 44100, "000:01:01.000"},
        {3600 * 59 + 59 * 60 + 59, 1, "059:59:59.000"},
        {61 * 3600, 1, "001:00:00.000"},         // hours wrap at 60
        {59999, 60000, "000:00:00.1000"},        // rounds to 1000 ms, no carry into the seconds
        {1, 3, "000:00:00.333"},
        {7, 0, "000:00:00.000"},                 // no scale, no duration
    };
    for (const Case& c : cases) EXPECT_EQ(FormatDuration(c.value, c.scale), c.text) << c.value << "/" << c.scale;
}

TEST(DateTextTest, DayMonthYearInTheLocalTimeZone) {
    vdtest::ScopedEnv utc("TZ", "UTC");
    EXPECT_EQ(FormatDateTime(0), "01-01-1904 00:00:00");
    EXPECT_EQ(FormatDateTime(3786825600u + 86399), "31-12-2023 23:59:59");
    EXPECT_EQ(FormatDateTime(0xFFFFFFFFu), "06-02-2040 06:28:15");
    {
        vdtest::ScopedEnv vienna("TZ", "CET-1CEST,M3.5.0,M10.5.0/3");
        EXPECT_EQ(FormatDateTime(3786912000u), "01-01-2024 01:00:00");
        EXPECT_EQ(FormatDateTime(3786912000u + 182 * 86400), "01-07-2024 02:00:00");
    }
}

}  // namespace
