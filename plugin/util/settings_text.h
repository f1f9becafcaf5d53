// Settings as text a user can keep in a field and hand back later: "<hex>" + the packed block in
// hexadecimal + "</hex>".
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "util/status_codes.h"

namespace vd::util {

inline constexpr std::string_view kSettingsOpenTag = "<hex>";
inline constexpr std::string_view kSettingsCloseTag = "</hex>";

// The settings packed, in upper-case hex, between the tags.
Status SettingsToHexText(const std::vector<uint8_t>& settings, std::string& text) noexcept;

// The settings back from a whole settings text. The opening tag must be the very first characters
// and the closing tag the very last, with an even number of hex digits (either case) and nothing
// else between them; every other text is -50. Unpacking failures are answered as UnpackSettings
// answers them. settings is replaced on success and emptied on any failure.
Status HexTextToSettings(std::string_view text, std::vector<uint8_t>& settings) noexcept;

}  // namespace vd::util
