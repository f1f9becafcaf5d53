#include "fmapi/errors/localized_strings.h"

#include "fmapi/args/text_conversion.h"
#include "fmapi/errors/strings_file.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <vector>

namespace vd {

namespace {

// A localization table is a few kilobytes; anything far larger is not ours and is not read.
constexpr std::streamsize kMaxTableBytes = 1 << 20;

struct Cache {
    std::string bundle;
    std::optional<StringsTable> table;
};

Cache& TheCache() {
    static Cache cache;
    return cache;
}

const StringsTable& Table() {
    Cache& cache = TheCache();
    if (!cache.table) {
        cache.table.emplace();
        if (!cache.bundle.empty()) {
            std::ifstream file(cache.bundle + "/Resources/Localizable.strings", std::ios::binary);
            if (file) {
                std::string text(static_cast<size_t>(kMaxTableBytes) + 1, '\0');
                file.read(text.data(), kMaxTableBytes + 1);
                auto got = file.gcount();
                if (got <= kMaxTableBytes) {
                    text.resize(static_cast<size_t>(got));
                    *cache.table = ParseStringsFile(text);
                }
            }
        }
    }
    return *cache.table;
}

}  // namespace

void SetBundlePath(std::string_view bundleFolder) {
    Cache& cache = TheCache();
    if (cache.bundle == bundleFolder) return;
    cache.bundle.assign(bundleFolder);
    cache.table.reset();
}

void ForgetLocalizedStrings() noexcept { TheCache().table.reset(); }

std::optional<std::string> LookupLocalized(int number) {
    const auto& entries = Table().entries;
    auto it = entries.find("String" + std::to_string(number));
    if (it == entries.end()) return std::nullopt;
    return it->second;
}

void LocalizedString(int number, char16_t* buffer, uint32_t capacity) noexcept {
    if (!buffer || capacity == 0) return;
    buffer[0] = 0;
    try {
        auto text = LookupLocalized(number);
        if (!text) return;
        auto units = Utf8ToUtf16(*text);
        if (!units || units->size() >= capacity - 1) return;
        std::copy(units->begin(), units->end(), buffer);
        buffer[units->size()] = 0;
    } catch (...) {
        // Out of memory while reading the table: the empty text is the answer for a missing key.
        buffer[0] = 0;
    }
}

std::u16string LocalizedString(int number, uint32_t capacity) {
    std::vector<char16_t> buffer(std::max<uint32_t>(capacity, 1), u'\0');
    LocalizedString(number, buffer.data(), capacity);
    return std::u16string(buffer.data());
}

}  // namespace vd
