#include "container_blob.h"

#include "database_error.h"

#include <api/text_codec.h>
#include <api/values.h>

#include <algorithm>
#include <cstring>
#include <limits>
#include <string>

namespace vdhost::db {
namespace {

constexpr uint8_t kMagic[4] = {'V', 'D', 'C', 'N'};
constexpr size_t kStreamHeaderSize = 4 + 8;

// Fills a buffer sized up front, so a large stream is copied once.
class Writer {
public:
    explicit Writer(size_t size) : bytes_(size) {}

    void raw(const void* data, size_t size) {
        if (size) std::memcpy(bytes_.data() + pos_, data, size);
        pos_ += size;
    }
    void little(uint64_t value, int size) {
        for (int i = 0; i < size; ++i) bytes_[pos_++] = static_cast<uint8_t>(value >> (8 * i));
    }
    void typeCode(uint32_t code) {
        for (int i = 0; i < 4; ++i) bytes_[pos_++] = static_cast<uint8_t>(code >> (24 - 8 * i));
    }
    Bytes finish() { return std::move(bytes_); }

private:
    Bytes bytes_;
    size_t pos_ = 0;
};

[[noreturn]] void malformed(const std::string& why) {
    throw DatabaseError("Malformed container data: " + why);
}

// Walks the blob front to back; every read is checked against what is left.
class Reader {
public:
    explicit Reader(std::span<const uint8_t> bytes) : bytes_(bytes) {}

    size_t left() const { return bytes_.size() - pos_; }

    std::span<const uint8_t> take(uint64_t count, const char* what) {
        if (count > left())
            malformed(std::string(what) + " needs " + std::to_string(count) + " bytes at offset " +
                      std::to_string(pos_) + " but only " + std::to_string(left()) + " are left");
        auto part = bytes_.subspan(pos_, static_cast<size_t>(count));
        pos_ += static_cast<size_t>(count);
        return part;
    }

    uint64_t little(int size, const char* what) {
        auto part = take(static_cast<uint64_t>(size), what);
        uint64_t value = 0;
        for (int i = size - 1; i >= 0; --i) value = (value << 8) | part[static_cast<size_t>(i)];
        return value;
    }

    uint32_t typeCode(const char* what) {
        auto part = take(4, what);
        uint32_t code = 0;
        for (uint8_t b : part) code = (code << 8) | b;
        return code;
    }

private:
    std::span<const uint8_t> bytes_;
    size_t pos_ = 0;
};

}  // namespace

Bytes encodeContainer(const FMX_Data& container) {
    const std::string text = utf16ToUtf8(container.text.units);
    const auto& streams = container.binary.streams;
    if (text.size() > std::numeric_limits<uint32_t>::max())
        throw DatabaseError("A container's own text is too long to store");
    if (streams.size() > std::numeric_limits<uint32_t>::max())
        throw DatabaseError("A container has too many streams to store");

    size_t total = sizeof kMagic + 2 + 2 + 4 + text.size() + 4;
    for (const Stream& s : streams) total += kStreamHeaderSize + s.size();

    const bool byReference = streams.empty() && !text.empty();
    Writer out(total);
    out.raw(kMagic, sizeof kMagic);
    out.little(kContainerBlobVersion, 2);
    out.little(byReference ? kContainerByReference : 0, 2);
    out.little(text.size(), 4);
    out.raw(text.data(), text.size());
    out.little(streams.size(), 4);
    for (const Stream& s : streams) {
        out.typeCode(s.type);
        out.little(s.size(), 8);
        if (s.bytes) out.raw(s.bytes->data(), s.bytes->size());
    }
    return out.finish();
}

FMX_Data decodeContainer(std::span<const uint8_t> blob) {
    Reader in(blob);
    auto magic = in.take(sizeof kMagic, "the magic");
    if (!std::equal(magic.begin(), magic.end(), std::begin(kMagic)))
        malformed("it does not start with \"VDCN\"");
    auto version = in.little(2, "the version");
    if (version != kContainerBlobVersion)
        malformed("version " + std::to_string(version) + " is not known (this vdhost reads version " +
                  std::to_string(kContainerBlobVersion) + ")");
    auto flags = in.little(2, "the flags");
    if (flags & ~uint64_t{kContainerByReference}) malformed("unknown flags " + std::to_string(flags));

    auto textBytes = in.take(in.little(4, "the text length"), "the own text");
    std::u16string text =
        utf8ToUtf16(std::string_view(reinterpret_cast<const char*>(textBytes.data()), textBytes.size()));

    uint64_t count = in.little(4, "the stream count");
    // Each stream takes at least its header, so a count the bytes cannot hold is refused before
    // anything is allocated for it.
    if (count > in.left() / kStreamHeaderSize)
        malformed(std::to_string(count) + " streams cannot fit in the " + std::to_string(in.left()) +
                  " bytes left");
    const bool byReference = flags & kContainerByReference;
    if (byReference && count != 0) malformed("a container stored by reference has streams");
    if (byReference && text.empty()) malformed("a container stored by reference has no reference text");

    FMX_BinaryData binary;
    binary.streams.reserve(static_cast<size_t>(count));
    for (uint64_t i = 0; i < count; ++i) {
        uint32_t type = in.typeCode("a stream type");
        auto bytes = in.take(in.little(8, "a stream length"), "the stream bytes");
        binary.streams.push_back({type, StreamBytes::copyOf(bytes.data(), bytes.size())});
    }
    if (in.left() != 0) malformed(std::to_string(in.left()) + " bytes follow the last stream");
    return makeContainer(std::move(binary), std::move(text));
}

FMX_Data decodeContainer(const Bytes& blob) { return decodeContainer(std::span<const uint8_t>(blob)); }

}  // namespace vdhost::db
