// The output format texts users write ("MP3 ", "57415645") and the list of formats they can choose.
#pragma once

#include "platform/media/errors.h"
#include "platform/media/four_char_code.h"

#include <optional>
#include <string>
#include <string_view>

namespace vd::sound {

// Exactly 4 characters give their code, the first in the high byte; exactly 8 hexadecimal digits
// give the 32-bit code. Anything else (another length, a character beyond one byte, a digit that
// is not hexadecimal) gives nothing.
std::optional<media::FourCharCode> OutputFormatFromText(std::string_view utf8);

// One line per installed exporter, by subtype: "%08X|code|name|information", the code's bytes
// below 32 or from 128 up and "|" shown as blanks, "|" in the name and information made blanks,
// the information's leading "a QuickTime Movie " dropped; lines joined by "\r", none after the
// last. The media layer's failure when the exporters cannot be listed.
media::Status OutputFormatList(std::string& text);

}  // namespace vd::sound
