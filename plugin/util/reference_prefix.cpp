#include "util/reference_prefix.h"

#include <array>

namespace vd::util {

namespace {

// Order matters: "movie" would swallow "moviemac" if it came first.
constexpr std::array<std::string_view, 10> kPrefixWords{
    "moviemac", "moviewin", "movie", "imagemac", "imagewin", "image", "filemac", "filewin", "filenet", "file"};

}  // namespace

std::string_view ReferencePrefix(std::string_view text) {
    for (std::string_view word : kPrefixWords) {
        if (text.starts_with(word)) return word;
    }
    return {};
}

bool AppendPlatformPrefix(std::string& text, std::string_view word) {
    if (word.empty()) return false;
    text.append(word);
    text.append("mac:");
    return true;
}

}  // namespace vd::util
