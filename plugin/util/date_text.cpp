#include "util/date_text.h"

#include <cstdio>
#include <ctime>

namespace vd::util {

namespace {

// 1904-01-01 to 1970-01-01: 66 years, 17 of them leap years.
constexpr int64_t kSeconds1904To1970 = (66 * 365 + 17) * int64_t{86400};

}  // namespace

std::string FormatDateTime(uint32_t secondsSince1904) {
    const time_t unixTime = static_cast<time_t>(int64_t{secondsSince1904} - kSeconds1904To1970);
    struct tm local {};
    int day = 0, month = 0, year = 0, hour = 0, minute = 0, second = 0;
    if (localtime_r(&unixTime, &local)) {
        day = local.tm_mday;
        month = local.tm_mon + 1;
        year = local.tm_year + 1900;
        hour = local.tm_hour;
        minute = local.tm_min;
        second = local.tm_sec;
    }
    char text[64];
    std::snprintf(text, sizeof text, "%2.2d-%2.2d-%4.4d %2.2d:%2.2d:%2.2d", day, month, year, hour, minute, second);
    return text;
}

}  // namespace vd::util
