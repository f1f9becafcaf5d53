// Whether a statement of a script goes on in the next line.
#pragma once

#include <string_view>

namespace vdhost::calc {

// True when the text ends inside a text literal or a /* comment, or with a ( or [ still open.
bool needsContinuation(std::u16string_view text);

}  // namespace vdhost::calc
