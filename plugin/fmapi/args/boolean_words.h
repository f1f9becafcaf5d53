// The words users write for yes and no in boolean arguments, in the languages our users work in.
#pragma once

#include <string_view>

namespace vd {

// Case-insensitive whole-word match: 1, true, yes, ja, o, j, y are true; 0, false, no, nein, n are
// false; anything else (the empty text included) is false.
bool BooleanFromWord(std::string_view word);

}  // namespace vd
