#include "container/stream_types.h"

namespace vd::container {

std::string FourCCText(uint32_t code) {
    std::string text(4, ' ');
    for (int i = 0; i < 4; ++i) text[i] = static_cast<char>((code >> (24 - 8 * i)) & 0xFF);
    return text;
}

}  // namespace vd::container
