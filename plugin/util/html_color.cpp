#include "util/html_color.h"

#include <array>

#include "util/blank_trim.h"

namespace vd::util {

namespace {

struct NamedColor {
    std::string_view name;
    RgbColor color;
};

constexpr std::array<NamedColor, 16> kBasicColors{{
    {"black", {0x00, 0x00, 0x00}},  {"silver", {0xC0, 0xC0, 0xC0}}, {"gray", {0x80, 0x80, 0x80}},
    {"white", {0xFF, 0xFF, 0xFF}},  {"maroon", {0x80, 0x00, 0x00}}, {"red", {0xFF, 0x00, 0x00}},
    {"purple", {0x80, 0x00, 0x80}}, {"fuchsia", {0xFF, 0x00, 0xFF}}, {"green", {0x00, 0x80, 0x00}},
    {"lime", {0x00, 0xFF, 0x00}},   {"olive", {0x80, 0x80, 0x00}},  {"yellow", {0xFF, 0xFF, 0x00}},
    {"navy", {0x00, 0x00, 0x80}},   {"blue", {0x00, 0x00, 0xFF}},   {"teal", {0x00, 0x80, 0x80}},
    {"aqua", {0x00, 0xFF, 0xFF}},
}};

int DigitValue(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    return -1;
}

char LowerAscii(char c) { return (c >= 'A' && c <= 'Z') ? static_cast<char>(c - 'A' + 'a') : c; }

bool EqualsIgnoringCase(std::string_view text, std::string_view lowerName) {
    if (text.size() != lowerName.size()) return false;
    for (size_t i = 0; i < text.size(); ++i) {
        if (LowerAscii(text[i]) != lowerName[i]) return false;
    }
    return true;
}

// Channels of digitsPerChannel digits each; one digit stands for itself repeated ("F" is "FF").
bool ReadChannels(std::string_view digits, size_t digitsPerChannel, RgbColor& color) {
    uint8_t channels[3];
    for (size_t channel = 0; channel < 3; ++channel) {
        int value = 0;
        for (size_t i = 0; i < digitsPerChannel; ++i) {
            const int digit = DigitValue(digits[channel * digitsPerChannel + i]);
            if (digit < 0) return false;
            value = value * 16 + digit;
        }
        channels[channel] = static_cast<uint8_t>(digitsPerChannel == 1 ? value * 17 : value);
    }
    color = RgbColor{channels[0], channels[1], channels[2]};
    return true;
}


}  // namespace

Status ParseHtmlColor(std::string_view text, RgbColor& color) {
    text = TrimBlanks(text);
    for (const NamedColor& named : kBasicColors) {
        if (EqualsIgnoringCase(text, named.name)) {
            color = named.color;
            return kNoError;
        }
    }
    const bool hash = text.starts_with('#');
    const std::string_view digits = hash ? text.substr(1) : text;
    bool read = false;
    if (digits.size() == 6) read = ReadChannels(digits, 2, color);
    else if (digits.size() == 3 && hash) read = ReadChannels(digits, 1, color);
    return read ? kNoError : kBadParameter;
}

}  // namespace vd::util
