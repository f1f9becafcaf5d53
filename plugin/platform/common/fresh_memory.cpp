#include "platform/common/fresh_memory.h"

#include <cstdint>

#include <sys/mman.h>
#include <unistd.h>

namespace vd::platform {

namespace {

constexpr uintptr_t kHugePage = uintptr_t(2) << 20;

}  // namespace

void AdviseHugePages(void* start, size_t size) {
    const uintptr_t begin = (reinterpret_cast<uintptr_t>(start) + kHugePage - 1) & ~(kHugePage - 1);
    const uintptr_t end = (reinterpret_cast<uintptr_t>(start) + size) & ~(kHugePage - 1);
    if (end > begin) ::madvise(reinterpret_cast<void*>(begin), end - begin, MADV_HUGEPAGE);
}

void PrepareForWriting(void* start, size_t size) {
    static const uintptr_t page = uintptr_t(::sysconf(_SC_PAGESIZE));
    // The pages that hold the range, which a heap block shares with its neighbours only at the
    // ends; making an already made page is a no-op.
    const uintptr_t begin = reinterpret_cast<uintptr_t>(start) & ~(page - 1);
    const uintptr_t end = (reinterpret_cast<uintptr_t>(start) + size + page - 1) & ~(page - 1);
    if (size > 0) ::madvise(reinterpret_cast<void*>(begin), end - begin, MADV_POPULATE_WRITE);
}

}  // namespace vd::platform
