// Numbers typed as text the way the function has always read them: the leading number of the
// text as C's "%f" finds it ("1.5", "2s", " 2"), with a point as the decimal separator whatever the
// user's locale.
#pragma once

#include <optional>
#include <string_view>

namespace vd::sound {

// The leading number as a single-precision float; nothing when the text does not begin with one.
std::optional<float> ScanFloat(std::string_view text);

}  // namespace vd::sound
