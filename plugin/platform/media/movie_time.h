// Times in the movie model are counts of a time scale's units, as on the Mac: the movie counts in
// 600ths of a second, a sound media in its sample frames. A range may name its own scale, so the
// sound functions can pass their 16.16 seconds (scale 65536) without a lossy step through 600.
#pragma once

#include <cstdint>

namespace vd::media {

inline constexpr int32_t kMovieTimeScale = 600;
inline constexpr int32_t kSecondsFixedScale = 65536;  // 16.16 seconds as a time value

// value counted in fromScale units, in toScale units, rounded to the nearest (half away from 0).
inline int64_t ConvertTimeScale(int64_t value, int64_t fromScale, int64_t toScale) {
    if (fromScale <= 0 || toScale <= 0) return 0;
    __extension__ typedef __int128 Wide;  // the product of a frame count and a rate overflows 64 bits
    Wide scaled = Wide(value) * toScale;
    Wide half = fromScale / 2;
    Wide result = scaled >= 0 ? (scaled + half) / fromScale : -((-scaled + half) / fromScale);
    if (result > INT64_MAX) return INT64_MAX;
    if (result < INT64_MIN) return INT64_MIN;
    return int64_t(result);
}

struct TimeRange {
    int64_t start = 0;
    int64_t duration = 0;
    int32_t scale = 0;  // 0: the movie's own time scale
};

}  // namespace vd::media
