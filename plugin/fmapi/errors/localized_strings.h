// The plug-in's own texts ("String1", "String201" ...), read from Resources/Localizable.strings in
// its bundle so that they can be translated without rebuilding.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vd {

// The bundle folder the host told us about; the table is read from it on first use. A different
// folder drops what was read before.
void SetBundlePath(std::string_view bundleFolder);
// Drops the cached table (at shut-down), so a restarted plug-in sees an edited file.
void ForgetLocalizedStrings() noexcept;

// The text of "String<number>", or nothing when the table does not hold the key.
std::optional<std::string> LookupLocalized(int number);

// The text as UTF-16 into buffer, terminated; the buffer is left empty when the key is missing or
// the text (with its terminator) does not fit in capacity - 1 units. Never writes to a buffer of
// capacity 0.
void LocalizedString(int number, char16_t* buffer, uint32_t capacity) noexcept;

// The same into a string, for callers that have no fixed buffer (the capacity rule still applies).
std::u16string LocalizedString(int number, uint32_t capacity);

}  // namespace vd
