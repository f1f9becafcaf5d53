#include "platform/media/huge_pages.h"

#include <cstdint>

#include <sys/mman.h>
#include <unistd.h>

namespace vd::media {

void AdviseHugePages(void* data, size_t size) {
    constexpr size_t kWorthIt = size_t(4) << 20;
    if (size < kWorthIt) return;
    const auto page = uintptr_t(::sysconf(_SC_PAGESIZE));
    const auto from = (uintptr_t(data) + page - 1) / page * page;
    const auto to = (uintptr_t(data) + size) / page * page;
    if (to > from) (void)::madvise(reinterpret_cast<void*>(from), to - from, MADV_HUGEPAGE);
}

}  // namespace vd::media
