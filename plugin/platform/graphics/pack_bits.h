// PackBits, the run-length coding of Mac pictures (MacPaint rows, PICT pixmap rows): a count byte
// n then n + 1 literal bytes when n is 0..127, or one byte repeated 1 - n times when n is -127..-1.
#pragma once

#include <cstddef>
#include <cstdint>

namespace vd::platform {

// The most bytes Pack writes for size bytes.
constexpr size_t PackBitsBound(size_t size) { return size + size / 128 + 2; }

// Packs size bytes into out (room for PackBitsBound(size)); the number of bytes written. Runs
// never reach past size, so rows packed one after another unpack one by one or all together.
size_t PackBits(const uint8_t* in, size_t size, uint8_t* out);

// Unpacks exactly size bytes from packed (available bytes of it); the number of packed bytes
// read, or 0 when the data ends first or a run or literal reaches past size.
size_t UnpackBits(const uint8_t* packed, size_t available, uint8_t* out, size_t size);

// Whether packed (available bytes of it) unpacks to exactly size bytes, all of it used; cheap, since
// literals are skipped, not copied.
bool UnpacksTo(const uint8_t* packed, size_t available, size_t size);

}  // namespace vd::platform
