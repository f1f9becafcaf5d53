// Large buffers that are filled once from start to end (the stream of a stored sound): every 4 KB
// page of a fresh allocation costs a page fault when it is first touched, and on a virtual machine
// faults cost more than the copying itself. Asking for huge pages takes one fault per 2 MB instead.
#pragma once

#include <cstddef>

namespace vd::media {

// Advice only: where the system has no huge pages to give (or gives them to everything already),
// nothing changes. Buffers under a few megabytes are left alone.
void AdviseHugePages(void* data, size_t size);

}  // namespace vd::media
