// Conversions between the host's UTF-16 texts and 8-bit encodings.
#pragma once

#include <string>
#include <string_view>

namespace vdhost {

// Invalid sequences become U+FFFD.
std::u16string utf8ToUtf16(std::string_view bytes);
std::u16string latin1ToUtf16(std::string_view bytes);

// Lone surrogates become U+FFFD.
std::string utf16ToUtf8(std::u16string_view units);
// Characters outside ISO-8859-1 become '?'.
std::string utf16ToLatin1(std::u16string_view units);

// The UTF-8 form of units, cut so that it fits into limit bytes without splitting a character.
std::string utf16ToUtf8Limited(std::u16string_view units, size_t limit);

}  // namespace vdhost
