// One libFuzzer target for the paths users type: relative and absolute forms. The first byte
// chooses the form, the rest is its input.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "platform/fs/path_resolver.h"

namespace {

void FuzzResolvePath(std::string_view text, bool relative) {
    vd::util::FileLocation location;
    // A base folder that exists everywhere, so that relative forms get past their first check.
    const int status = vd::util::ResolvePath(location, text, relative, "/tmp");
    if (status == 0 && (location.existingPath.empty() || location.existingPath.front() != '/')) __builtin_trap();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size == 0) return 0;
    const std::string_view text(reinterpret_cast<const char*>(data + 1), size - 1);
    FuzzResolvePath(text, data[0] % 2 == 0);
    return 0;
}
