// Large buffers in huge pages. Each first touch of a 4 KiB page of fresh memory costs a fault, and
// on a virtual machine a fault costs far more than the copy it interrupts; a buffer of tens of
// megabytes filled once (a picture, a file) then spends more time faulting than copying. Asking
// the kernel for 2 MiB pages for it makes those faults 512 times fewer.
#pragma once

#include <cstddef>

namespace vd::platform {

// Advises the whole 2 MiB pages inside [start, start + size) to be huge, where the kernel allows
// it; memory not yet touched is then made in huge pages. Small buffers and failures are ignored:
// this only ever changes speed.
void AdviseHugePages(void* start, size_t size);

}  // namespace vd::platform
