#include "container/stored_reference.h"

namespace vd::container {

std::vector<std::string_view> StoredReferenceLines(std::string_view text) {
    const std::string_view kept = text.substr(0, kStoredReferenceLimit);
    std::vector<std::string_view> lines;
    for (size_t start = 0; start < kept.size();) {
        size_t end = kept.find_first_of("\r\n", start);
        if (end == std::string_view::npos) end = kept.size();
        if (end > start) lines.push_back(kept.substr(start, end - start).substr(0, kReferenceTextLimit));
        start = end + 1;
    }
    return lines;
}

}  // namespace vd::container
