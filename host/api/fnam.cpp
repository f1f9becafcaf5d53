#include "fnam.h"

#include "text_codec.h"

namespace vdhost {

namespace {
constexpr uint8_t kFnamVersion = 1;
}

Bytes encodeFnam(std::u16string_view name) {
    std::string utf8 = utf16ToUtf8(name);
    Bytes out;
    out.reserve(utf8.size() + 1);
    out.push_back(kFnamVersion);
    out.insert(out.end(), utf8.begin(), utf8.end());
    return out;
}

std::optional<std::u16string> decodeFnam(std::span<const uint8_t> bytes) {
    if (bytes.empty() || bytes[0] != kFnamVersion) return std::nullopt;
    return utf8ToUtf16(std::string_view(reinterpret_cast<const char*>(bytes.data()) + 1, bytes.size() - 1));
}

}  // namespace vdhost
