#include "util/settings_text.h"

#include <new>

#include "util/hex_text.h"
#include "util/settings_pack.h"

namespace vd::util {

Status SettingsToHexText(const std::vector<uint8_t>& settings, std::string& text) noexcept {
    try {
        std::vector<uint8_t> block = settings;
        if (const Status status = PackSettings(block); status != kNoError) return status;
        std::string hex;
        if (const Status status = HexEncode(block.data(), block.size(), hex); status != kNoError) return status;
        std::string whole;
        whole.reserve(kSettingsOpenTag.size() + hex.size() + kSettingsCloseTag.size());
        whole.append(kSettingsOpenTag).append(hex).append(kSettingsCloseTag);
        text.swap(whole);
        return kNoError;
    } catch (const std::bad_alloc&) {
        return kMemoryFull;
    }
}

Status HexTextToSettings(std::string_view text, std::vector<uint8_t>& settings) noexcept {
    settings.clear();
    if (!text.starts_with(kSettingsOpenTag)) return kBadParameter;
    text.remove_prefix(kSettingsOpenTag.size());
    if (!text.ends_with(kSettingsCloseTag)) return kBadParameter;
    text.remove_suffix(kSettingsCloseTag.size());
    if (text.size() % 2 != 0) return kBadParameter;

    try {
        // No more than half the text's own length, so the input bounds this allocation.
        std::vector<uint8_t> block(text.size() / 2);
        if (const Status status = HexDecode(text, block.data()); status != kNoError) return status;
        if (const Status status = UnpackSettings(block); status != kNoError) return status;
        settings.swap(block);
        return kNoError;
    } catch (const std::bad_alloc&) {
        return kMemoryFull;
    }
}

}  // namespace vd::util
