// The host's requests for the plug-in's fixed strings: its name, its description and its options.
#pragma once

#include <fmx/callblock.h>

namespace vd {

// "VD70" is the plug-in id every function is registered under; the flags after the version figure
// are in the positions the host defines and are written exactly as shipped.
inline constexpr char16_t kOptionsString[] = u"VD701YnYnnn";

// 128 name ("String1"), 129 description ("String2"), both cut to nothing when they do not fit;
// 131 the options string, always 12 units with its terminator; other numbers leave the buffer alone.
void AnswerStringRequest(const ExternCallBlock& block) noexcept;

}  // namespace vd
