#include "platform/common/huge_pages.h"

#include <cstdint>

#include <sys/mman.h>

namespace vd::platform {

namespace {

constexpr uintptr_t kHugePage = uintptr_t(2) << 20;

}  // namespace

void AdviseHugePages(void* start, size_t size) {
    const uintptr_t begin = (reinterpret_cast<uintptr_t>(start) + kHugePage - 1) & ~(kHugePage - 1);
    const uintptr_t end = (reinterpret_cast<uintptr_t>(start) + size) & ~(kHugePage - 1);
    if (end > begin) ::madvise(reinterpret_cast<void*>(begin), end - begin, MADV_HUGEPAGE);
}

}  // namespace vd::platform
