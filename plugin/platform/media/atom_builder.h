// QuickTime atoms built in memory: big-endian numbers, and nested atoms whose sizes are filled in
// when they are closed. Used for the small movies we lay out ourselves rather than through a muxer.
#pragma once

#include "platform/media/four_char_code.h"

#include <algorithm>
#include <cstdint>
#include <string_view>
#include <vector>

namespace vd::media {

class AtomBuilder {
public:
    void U8(uint8_t v) { bytes_.push_back(v); }
    void U16(uint16_t v) {
        U8(uint8_t(v >> 8));
        U8(uint8_t(v));
    }
    void U32(uint32_t v) {
        U16(uint16_t(v >> 16));
        U16(uint16_t(v));
    }
    void U64(uint64_t v) {
        U32(uint32_t(v >> 32));
        U32(uint32_t(v));
    }
    void Zeros(size_t count) { bytes_.insert(bytes_.end(), count, 0); }
    void Bytes(const void* data, size_t size) {
        const auto* p = static_cast<const uint8_t*>(data);
        bytes_.insert(bytes_.end(), p, p + size);
    }
    void Text(std::string_view text) { Bytes(text.data(), text.size()); }
    // A Pascal string in a field of fieldSize bytes (length byte included), cut to fit.
    void PascalString(std::string_view text, size_t fieldSize) {
        const size_t length = std::min(text.size(), fieldSize - 1);
        U8(uint8_t(length));
        Bytes(text.data(), length);
        Zeros(fieldSize - 1 - length);
    }
    // The identity matrix of track and movie headers.
    void UnityMatrix() {
        const uint32_t m[9] = {0x00010000, 0, 0, 0, 0x00010000, 0, 0, 0, 0x40000000};
        for (uint32_t v : m) U32(v);
    }

    // Opens an atom of a type; every Begin is matched by an End, which writes the size.
    void Begin(FourCharCode type) {
        open_.push_back(bytes_.size());
        U32(0);
        U32(type);
    }
    // A "full atom": type, then version and 24 bits of flags.
    void BeginFull(FourCharCode type, uint8_t version, uint32_t flags) {
        Begin(type);
        U32(uint32_t(version) << 24 | (flags & 0xFFFFFF));
    }
    void End() {
        const size_t start = open_.back();
        open_.pop_back();
        const auto size = uint32_t(bytes_.size() - start);
        for (int i = 0; i < 4; ++i) bytes_[start + size_t(i)] = uint8_t(size >> (24 - 8 * i));
    }

    size_t Size() const { return bytes_.size(); }
    const std::vector<uint8_t>& Result() const { return bytes_; }

private:
    std::vector<uint8_t> bytes_;
    std::vector<size_t> open_;
};

}  // namespace vd::media
