#include "platform/common/tick_count.h"

#include <time.h>

namespace vd::sound {

uint32_t TickCount() {
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return uint32_t(uint64_t(now.tv_sec) * 60 + uint64_t(now.tv_nsec) / (1000000000 / 60));
}

}  // namespace vd::sound
