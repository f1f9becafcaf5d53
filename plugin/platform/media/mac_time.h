// Dates as the Mac media framework kept them: unsigned seconds since 1 January 1904, 00:00 UTC.
#pragma once

#include <cstdint>
#include <ctime>

namespace vd::media {

inline constexpr int64_t kSeconds1904To1970 = 2082844800;

inline uint32_t MacSecondsFromUnix(int64_t unixSeconds) {
    int64_t mac = unixSeconds + kSeconds1904To1970;
    if (mac < 0) return 0;
    return mac > int64_t(UINT32_MAX) ? UINT32_MAX : uint32_t(mac);
}

inline uint32_t MacSecondsNow() { return MacSecondsFromUnix(int64_t(std::time(nullptr))); }

}  // namespace vd::media
