// Large buffers filled once, from start to end (a picture, a file). Each first touch of a 4 KiB page
// of fresh memory costs a fault, and on a virtual machine a fault costs far more than the copy it
// interrupts: filling a buffer of tens of megabytes page by page spends most of its time faulting.
// Two ways around it: ask for 2 MiB pages (512 times fewer faults), or have the kernel make the
// pages ahead of the writer in one call, without a fault each.
#pragma once

#include <cstddef>

namespace vd::platform {

// Advises the whole 2 MiB pages inside [start, start + size) to be huge, where the kernel allows
// it; memory not yet touched is then made in huge pages. Small buffers and failures are ignored:
// this only ever changes speed.
void AdviseHugePages(void* start, size_t size);

// Makes the pages of [start, start + size) writable memory now, in one call. A kernel without the
// call leaves them to be faulted in as they are written: this too only ever changes speed.
void PrepareForWriting(void* start, size_t size);

}  // namespace vd::platform
