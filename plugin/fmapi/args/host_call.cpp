#include "fmapi/args/host_call.h"

#include <new>

namespace vd::fmapi {

const char* HostCallFailed::what() const noexcept { return "host call failed"; }

void ThrowIfFailed(const FMX_CallRecord& record) {
    if (record.code == FMX_RECORD_OUT_OF_MEMORY) throw std::bad_alloc();
    if (record.code == FMX_RECORD_FAILED) throw HostCallFailed();
}

}  // namespace vd::fmapi
