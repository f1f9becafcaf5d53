#include "frame/string_requests.h"

#include "fmapi/errors/localized_strings.h"

#include <algorithm>
#include <iterator>

namespace vd {

void AnswerStringRequest(const ExternCallBlock& block) noexcept {
    auto* buffer = reinterpret_cast<char16_t*>(block.result);
    if (!buffer) return;
    switch (block.parm1) {
    case FMX_STRING_NAME: LocalizedString(1, buffer, block.parm3); break;
    case FMX_STRING_DESCRIPTION: LocalizedString(2, buffer, block.parm3); break;
    case FMX_STRING_OPTIONS:
        // Hosts have always asked for this with room for it; the capacity is not consulted.
        std::copy(std::begin(kOptionsString), std::end(kOptionsString), buffer);
        break;
    default: break;
    }
}

}  // namespace vd
