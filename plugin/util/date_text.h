// Dates as "dd-mm-yyyy hh:mm:ss" in the local time zone.
#pragma once

#include <cstdint>
#include <string>

namespace vd::util {

// Seconds since 1 January 1904, 00:00 UTC, the epoch of media and file dates. When the local time
// cannot be had, every field is 0 ("00-00-0000 00:00:00"), the text scripts already check for.
std::string FormatDateTime(uint32_t secondsSince1904);

}  // namespace vd::util
