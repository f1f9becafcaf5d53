// The fixed English sentence for each status code the plug-in reports.
#pragma once

#include <cstdint>
#include <string_view>

namespace vd {

// The sentence for a code; empty for codes the table does not hold and for every positive code
// (the plug-in's own positive codes always come with a message of their own).
std::string_view MessageForCode(int32_t code);

}  // namespace vd
