// Reading single values out of the plug-in's report texts: indented outlines, one "Label: value" item
// per line, lines separated by carriage returns, two blanks of indentation per level.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace vd::sound {

struct Extraction {
    int32_t code = 0;  // 0, or the failure's code
    std::string value;  // the value, or on failure the function's own message ("" for none)
};

// key: blanks and tabs around it are ignored; digits only (or nothing) is a line number, 0 asking for
// the number of lines; anything else is a path of labels separated by "/", each label compared with
// its parenthesised unit dropped ("Track 1/Media/Sample Description 1/Sample Rate (Hz)"). Lines are
// read whole whatever their length.
Extraction ExtractInfo(std::string_view report, std::string_view key);

// A label with its trailing parenthesised part (and the blanks before it) removed; empty for a label
// of blanks only or whose ")" has no "(" after its first character. Other labels stay as they are.
std::string NormaliseLabel(std::string_view label);

}  // namespace vd::sound
