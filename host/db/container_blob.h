// The bytes a container value is kept as in a container field. The layout is fixed by
// docs/database.md; all integers are little-endian:
//
//   magic "VDCN" | u16 version (1) | u16 flags (bit 0: stored by reference)
//   | u32 own-text length | own text (UTF-8)
//   | u32 stream count | per stream: 4 type bytes (first character first) | u64 length | bytes
//
// Nothing may follow the last stream. Both functions are pure.
#pragma once

#include <api/objects.h>

#include <span>

namespace vdhost::db {

constexpr uint16_t kContainerBlobVersion = 1;
constexpr uint16_t kContainerByReference = 0x0001;

Bytes encodeContainer(const FMX_Data& container);

// Throws DatabaseError naming what is wrong for bytes that are not in the layout above: a wrong
// magic, another version, unknown flags, a length running past the end, bytes left over, streams
// in a container stored by reference. Never reads outside the bytes given.
FMX_Data decodeContainer(std::span<const uint8_t> blob);
FMX_Data decodeContainer(const Bytes& blob);

}  // namespace vdhost::db
