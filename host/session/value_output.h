// How the host shows a calculation result and writes it to a file.
#pragma once

#include "api/objects.h"

#include <filesystem>
#include <memory>
#include <span>
#include <string>

namespace vdhost {

// Text and numbers as UTF-8 text (carriage returns shown as line breaks unless raw); a container with
// streams as one line per stream, type and size (the file name for "FNAM"); a container stored by
// reference as its reference text.
std::string displayText(const FMX_Data& value, bool raw);

// The bytes --out and the script's write statement put into a file: a container's first stream
// ("FNAM" and "SIZE" skipped), otherwise the text in UTF-8 with its carriage returns as line feeds,
// as the terminal shows it, unless raw. A container's stream is shared, not copied: results of
// hundreds of megabytes are written straight from the value.
std::shared_ptr<const StreamBytes> outputBytes(const FMX_Data& value, bool raw);

// Writes through a temporary file in the same folder and renames it into place, so that a failure
// never leaves a half-written target. Throws std::runtime_error with a readable message.
void writeFileAtomically(const std::filesystem::path& path, std::span<const uint8_t> bytes);

}  // namespace vdhost
