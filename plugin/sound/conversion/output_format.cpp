#include "sound/conversion/output_format.h"

#include "platform/media/exporters.h"

#include <cstdio>
#include <vector>

namespace vd::sound {

namespace {

// The code points of a UTF-8 text; nothing for a broken sequence.
std::optional<std::vector<char32_t>> CodePoints(std::string_view utf8) {
    std::vector<char32_t> out;
    for (size_t i = 0; i < utf8.size();) {
        const auto lead = uint8_t(utf8[i]);
        const int length = lead < 0x80 ? 1 : (lead >> 5) == 6 ? 2 : (lead >> 4) == 14 ? 3 : (lead >> 3) == 30 ? 4 : 0;
        if (length == 0 || i + size_t(length) > utf8.size()) return std::nullopt;
        char32_t c = length == 1 ? lead : lead & (0x7F >> length);
        for (int k = 1; k < length; ++k) {
            const auto next = uint8_t(utf8[i + size_t(k)]);
            if ((next >> 6) != 2) return std::nullopt;
            c = c << 6 | (next & 0x3F);
        }
        out.push_back(c);
        i += size_t(length);
    }
    return out;
}

int HexValue(char32_t c) {
    if (c >= '0' && c <= '9') return int(c - '0');
    if (c >= 'A' && c <= 'F') return int(c - 'A' + 10);
    if (c >= 'a' && c <= 'f') return int(c - 'a' + 10);
    return -1;
}

std::string Blanked(std::string text) {
    for (char& c : text)
        if (c == '|') c = ' ';
    return text;
}

}  // namespace

std::optional<media::FourCharCode> OutputFormatFromText(std::string_view utf8) {
    const auto points = CodePoints(utf8);
    if (!points) return std::nullopt;
    media::FourCharCode code = 0;
    if (points->size() == 4) {
        for (const char32_t c : *points) {
            if (c > 0xFF) return std::nullopt;
            code = code << 8 | c;
        }
        return code;
    }
    if (points->size() == 8) {
        for (const char32_t c : *points) {
            const int digit = HexValue(c);
            if (digit < 0) return std::nullopt;
            code = code << 4 | uint32_t(digit);
        }
        return code;
    }
    return std::nullopt;
}

media::Status OutputFormatList(std::string& text) {
    std::vector<media::ExporterInfo> exporters;
    if (media::Status s = media::InstalledExporters(exporters)) return s;
    constexpr std::string_view kPrefix = "a QuickTime Movie ";
    std::string list;
    for (const media::ExporterInfo& exporter : exporters) {
        char hex[9];
        std::snprintf(hex, sizeof hex, "%8.8lX", static_cast<unsigned long>(exporter.subtype));
        std::string characters = media::FourCCText(exporter.subtype);
        for (char& c : characters)
            if (uint8_t(c) < 32 || uint8_t(c) >= 128 || c == '|') c = ' ';
        std::string_view information = exporter.information;
        if (information.starts_with(kPrefix)) information.remove_prefix(kPrefix.size());
        if (!list.empty()) list += '\r';
        list += std::string(hex) + "|" + characters + "|" + Blanked(exporter.name) + "|" +
                Blanked(std::string(information));
    }
    text = std::move(list);
    return util::kNoError;
}

}  // namespace vd::sound
