// The bytes of one container stream. They never change once made, so copies of a container share
// them.
//
// A large stream (a picture, a sound) lives in an anonymous memory file, filled with write(2) and
// mapped read-only. Filling fresh anonymous memory takes a page fault for every page touched, and
// on a virtual machine those faults cost several times the copy itself (a 72 MB picture: up to a
// quarter of a second); the kernel's own copy into a memory file takes none, and its pages are
// only mapped when the stream is read. Small streams live on the heap.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace vdhost {

using Bytes = std::vector<uint8_t>;

class StreamBytes {
public:
    StreamBytes() = default;
    explicit StreamBytes(Bytes bytes) : heap_(std::move(bytes)) {}
    ~StreamBytes();
    StreamBytes(const StreamBytes&) = delete;
    StreamBytes& operator=(const StreamBytes&) = delete;

    // A copy of [p, p + n), in a memory file when it is large and one can be had.
    static std::shared_ptr<const StreamBytes> copyOf(const uint8_t* p, size_t n);

    const uint8_t* data() const { return mapped_ ? mapped_ : heap_.data(); }
    size_t size() const { return mapped_ ? mappedSize_ : heap_.size(); }
    bool empty() const { return size() == 0; }
    uint8_t operator[](size_t i) const { return data()[i]; }
    const uint8_t* begin() const { return data(); }
    const uint8_t* end() const { return data() + size(); }

    friend bool operator==(const StreamBytes& a, const Bytes& b) { return std::equal(a.begin(), a.end(), b.begin(), b.end()); }

private:
    Bytes heap_;
    const uint8_t* mapped_ = nullptr;
    size_t mappedSize_ = 0;
};

}  // namespace vdhost
