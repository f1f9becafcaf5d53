#include "base64.h"

namespace vdhost::calc {

namespace {

constexpr char kAlphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

int sextet(char16_t c) {
    if (c >= u'A' && c <= u'Z') return c - u'A';
    if (c >= u'a' && c <= u'z') return c - u'a' + 26;
    if (c >= u'0' && c <= u'9') return c - u'0' + 52;
    if (c == u'+') return 62;
    if (c == u'/') return 63;
    return -1;
}

bool isBlank(char16_t c) { return c == u' ' || c == u'\t' || c == u'\r' || c == u'\n'; }

}  // namespace

std::string base64Encode(const uint8_t* bytes, size_t size) {
    std::string out;
    out.reserve((size + 2) / 3 * 4);
    size_t i = 0;
    for (; i + 3 <= size; i += 3) {
        uint32_t n = (uint32_t{bytes[i]} << 16) | (uint32_t{bytes[i + 1]} << 8) | bytes[i + 2];
        for (int shift = 18; shift >= 0; shift -= 6) out.push_back(kAlphabet[(n >> shift) & 0x3F]);
    }
    size_t rest = size - i;
    if (rest > 0) {
        uint32_t n = uint32_t{bytes[i]} << 16;
        if (rest == 2) n |= uint32_t{bytes[i + 1]} << 8;
        out.push_back(kAlphabet[(n >> 18) & 0x3F]);
        out.push_back(kAlphabet[(n >> 12) & 0x3F]);
        out.push_back(rest == 2 ? kAlphabet[(n >> 6) & 0x3F] : '=');
        out.push_back('=');
    }
    return out;
}

std::optional<Bytes> base64Decode(std::u16string_view text) {
    Bytes out;
    out.reserve(text.size() / 4 * 3);
    uint32_t bits = 0;
    int pending = 0;   // sextets collected in the current group of four
    int padding = 0;   // "=" seen; only more "=" and blanks may follow
    for (char16_t c : text) {
        if (isBlank(c)) continue;
        if (c == u'=') {
            // Padding stands for the missing third or fourth sextet of the last group.
            if (pending < 2 || pending + padding >= 4) return std::nullopt;
            ++padding;
            continue;
        }
        int value = sextet(c);
        if (value < 0 || padding > 0) return std::nullopt;
        bits = (bits << 6) | static_cast<uint32_t>(value);
        if (++pending == 4) {
            out.push_back(static_cast<uint8_t>(bits >> 16));
            out.push_back(static_cast<uint8_t>(bits >> 8));
            out.push_back(static_cast<uint8_t>(bits));
            bits = 0;
            pending = 0;
        }
    }
    if (pending == 1) return std::nullopt;  // six bits cannot make a byte
    if (padding > 0 && pending + padding != 4) return std::nullopt;
    if (pending == 2) {
        out.push_back(static_cast<uint8_t>(bits >> 4));
    } else if (pending == 3) {
        out.push_back(static_cast<uint8_t>(bits >> 10));
        out.push_back(static_cast<uint8_t>(bits >> 2));
    }
    return out;
}

}  // namespace vdhost::calc
