#include "sound/synthesis/fixed_point.h"

namespace vd::sound {

uint32_t FixedFromFloat(double value) {
    const double scaled = value * 65536.0;
    if (!(scaled > 0)) return 0;  // also NaN
    if (scaled >= 2147483648.0) return kFixedMax;
    return uint32_t(scaled);
}

}  // namespace vd::sound
