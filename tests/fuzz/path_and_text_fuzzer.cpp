// One libFuzzer target for the texts users type or paste back: settings texts, escaped texts and
// paths. The first byte chooses the reader, the rest is its input.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "util/line_break_escape.h"
#include "util/path_resolver.h"
#include "util/settings_text.h"

namespace {

void FuzzSettingsText(std::string_view text) {
    std::vector<uint8_t> settings;
    if (vd::util::HexTextToSettings(text, settings) != 0) {
        if (!settings.empty()) __builtin_trap();  // no partial output
        return;
    }
    // Whatever was read must write back and read again the same.
    std::string again;
    std::vector<uint8_t> back;
    if (vd::util::SettingsToHexText(settings, again) != 0) return;
    if (vd::util::HexTextToSettings(again, back) != 0 || back != settings) __builtin_trap();
}

void FuzzUnescape(std::string_view text) {
    const std::string plain = vd::util::UnescapeLineBreaks(text);
    if (plain.size() > text.size()) __builtin_trap();
    if (plain.find('\0') == std::string::npos &&
        vd::util::UnescapeLineBreaks(vd::util::EscapeLineBreaks(plain)) != plain) {
        __builtin_trap();
    }
}

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
    switch (data[0] % 4) {
        case 0: FuzzSettingsText(text); break;
        case 1: FuzzUnescape(text); break;
        case 2: FuzzResolvePath(text, true); break;
        default: FuzzResolvePath(text, false); break;
    }
    return 0;
}
