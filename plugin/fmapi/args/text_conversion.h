// Conversions between UTF-8 and UTF-16 done by the plug-in itself (not through host texts).
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace vd {

// Nothing when the bytes are not valid UTF-8.
std::optional<std::u16string> Utf8ToUtf16(std::string_view utf8);

// Nothing when the units hold an unpaired surrogate, or when the text is too long: the output size
// is reserved up front as three bytes per unit and that reservation is a 16-bit signed number, so
// at most 10922 units (32766 bytes) convert. Callers rely on the bound to keep paths and messages
// in fixed buffers.
inline constexpr size_t kUtf16ToUtf8MaxUnits = 32767 / 3;
std::optional<std::string> Utf16ToUtf8(std::u16string_view units);

// Ends the text at its first carriage return, if it has one.
void CutAtReturn(std::string& text);

}  // namespace vd
