// Base64 (RFC 4648, standard alphabet, with padding).
#pragma once

#include "api/objects.h"

#include <optional>
#include <string>
#include <string_view>

namespace vdhost::calc {

// One line, no line breaks.
std::string base64Encode(const uint8_t* bytes, size_t size);

// Blanks and line breaks anywhere are skipped (encoders often wrap lines); the padding may be left
// out. nullopt for any other character, "=" before the end, or a length no encoder produces.
std::optional<Bytes> base64Decode(std::u16string_view text);

}  // namespace vdhost::calc
