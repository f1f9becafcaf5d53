#include "util/hex_text.h"

#include <new>
#include <stdexcept>

namespace vd::util {

namespace {

int DigitValue(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    return -1;
}

Status DecodeChunk(std::string_view chunk, uint8_t* out) {
    for (size_t i = 0; i < chunk.size(); i += 2) {
        const int high = DigitValue(chunk[i]);
        const int low = DigitValue(chunk[i + 1]);
        if (high < 0 || low < 0) return kBadParameter;
        out[i / 2] = static_cast<uint8_t>(high * 16 + low);
    }
    return kNoError;
}

}  // namespace

Status HexEncode(const uint8_t* bytes, size_t size, std::string& hex) noexcept {
    static constexpr char kDigits[] = "0123456789ABCDEF";
    if (!bytes && size > 0) return kBadParameter;
    try {
        std::string text(size * 2, '\0');
        for (size_t i = 0; i < size; ++i) {
            text[2 * i] = kDigits[bytes[i] >> 4];
            text[2 * i + 1] = kDigits[bytes[i] & 0x0F];
        }
        hex.swap(text);
        return kNoError;
    } catch (const std::bad_alloc&) {
        return kMemoryFull;
    } catch (const std::length_error&) {
        return kMemoryFull;
    }
}

Status HexDecode(std::string_view digits, uint8_t* out) noexcept {
    if (digits.size() % 2 != 0) return kBadParameter;
    for (size_t offset = 0; offset < digits.size(); offset += kHexChunkDigits) {
        if (const Status status = DecodeChunk(digits.substr(offset, kHexChunkDigits), out + offset / 2);
            status != kNoError) {
            return status;
        }
    }
    return kNoError;
}

}  // namespace vd::util
