// One libFuzzer target for the reference texts of containers stored by reference: the host's test of
// whether a text is one, and the plug-in's reading of its lines, each resolved as a path. The whole
// input is the text.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "container/stored_reference.h"
#include "db/reference_text.h"
#include "platform/fs/path_resolver.h"
#include "util/reference_prefix.h"

namespace {

// The text as the host holds it: UTF-16, each byte one character (Latin-1).
std::u16string Widened(std::string_view text) { return std::u16string(text.begin(), text.end()); }

void CheckHostAgrees(std::string_view text) {
    const bool host = vdhost::db::isReferenceText(Widened(text));
    // Every prefix word the plug-in reads is one the host stores as a reference.
    const std::string_view word = vd::util::ReferencePrefix(text);
    const std::string_view firstLine = text.substr(0, text.find_first_of("\r\n"));
    if (!word.empty() && firstLine.size() > word.size() && firstLine[word.size()] == ':' && !host) __builtin_trap();
}

void CheckLines(std::string_view text) {
    size_t total = 0;
    for (std::string_view line : vd::container::StoredReferenceLines(text)) {
        if (line.empty() || line.size() > vd::container::kReferenceTextLimit) __builtin_trap();
        if (line.find_first_of("\r\n") != std::string_view::npos) __builtin_trap();
        if (line.data() < text.data() || line.data() + line.size() > text.data() + text.size()) __builtin_trap();
        total += line.size();
        vd::util::FileLocation location;
        if (vd::util::ResolvePath(location, line, true, "/tmp") == 0 &&
            (location.existingPath.empty() || location.existingPath.front() != '/'))
            __builtin_trap();
    }
    if (total > vd::container::kStoredReferenceLimit) __builtin_trap();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    CheckHostAgrees(text);
    CheckLines(text);
    return 0;
}
