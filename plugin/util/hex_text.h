// Bytes as hexadecimal digits, two per byte, high nibble first.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "util/status_codes.h"

namespace vd::util {

// The digits are read in chunks of at most this many, the size the settings texts have always been
// read with; it is even, so a chunk never splits a byte.
inline constexpr size_t kHexChunkDigits = 254;

// Upper-case digits, no separators. -50 for missing bytes (a null pointer with a size), -108 when the text
// cannot be made; the text is replaced only on success.
Status HexEncode(const uint8_t* bytes, size_t size, std::string& hex) noexcept;

// Reads an even number of digits of either case into out, which must hold digits.size() / 2 bytes.
// -50 for an odd count or any character that is not a hex digit; out may then be partly written.
Status HexDecode(std::string_view digits, uint8_t* out) noexcept;

}  // namespace vd::util
