#include "container/workaround_switches.h"

namespace vd::container {

uint16_t gLinkMediaWorkaround = 0;
uint16_t gRemoteFileWorkaround = 0;

void InitWorkaroundSwitches() noexcept {
    gLinkMediaWorkaround = 0x8001;
    gRemoteFileWorkaround = 0x8001;
}

}  // namespace vd::container
