#include "fmapi/host_identity.h"

namespace vd::fmapi {

namespace {
int16_t gInterfaceVersion = 0;
}

void SetHostInterfaceVersion(int16_t version) noexcept { gInterfaceVersion = version; }
int16_t HostInterfaceVersion() noexcept { return gInterfaceVersion; }

}  // namespace vd::fmapi
