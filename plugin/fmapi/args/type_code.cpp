#include "fmapi/args/type_code.h"

namespace vd {

std::optional<uint32_t> TypeCodeFromText(std::string_view text) {
    if (text.empty()) return 0u;
    if (text.size() == 4 || (text.size() >= 5 && text[4] == '|')) {
        uint32_t code = 0;
        for (int i = 0; i < 4; ++i) code = code << 8 | static_cast<unsigned char>(text[i]);
        return code;
    }
    return std::nullopt;
}

}  // namespace vd
