// Four-character codes written as text by users ("JPEG", "PNGf", or "JPEG|..." starting a list).
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace vd {

// Four characters give their code (first character most significant); five or more with "|" as the
// fifth give the code of the first four; the empty text gives 0; any other text gives nothing.
std::optional<uint32_t> TypeCodeFromText(std::string_view text);

}  // namespace vd
