#include "platform/graphics/pack_bits.h"

#include <cstring>

namespace vd::platform {

namespace {

constexpr size_t kLongest = 128;
constexpr uint64_t kOnes = 0x0101010101010101ull;
constexpr uint64_t kHighs = 0x8080808080808080ull;

uint64_t Load(const uint8_t* p) {
    uint64_t v;
    std::memcpy(&v, p, sizeof v);
    return v;
}

bool ThreeAlike(const uint8_t* p) { return p[0] == p[1] && p[1] == p[2]; }

// Where a run of three equal bytes starts at or after from (before end), else end. Photographs
// have few runs, so eight positions are ruled out at a time: a zero byte of (a ^ b) | (b ^ c),
// a, b, c the words at from, from + 1 and from + 2, is a run.
size_t NextRun(const uint8_t* in, size_t from, size_t end) {
    size_t i = from;
    while (i + 10 <= end) {
        const uint64_t d = (Load(in + i) ^ Load(in + i + 1)) | (Load(in + i + 1) ^ Load(in + i + 2));
        if ((d - kOnes) & ~d & kHighs) break;
        i += 8;
    }
    for (; i + 2 < end; ++i)
        if (ThreeAlike(in + i)) return i;
    return end;
}

}  // namespace

size_t PackBits(const uint8_t* in, size_t size, uint8_t* out) {
    uint8_t* const start = out;
    size_t i = 0;
    while (i < size) {
        size_t run = 1;
        while (i + run < size && run < kLongest && in[i + run] == in[i]) ++run;
        if (run >= 3) {
            *out++ = uint8_t(257 - run);  // -(run - 1) as a signed byte
            *out++ = in[i];
            i += run;
            continue;
        }
        const size_t literalEnd = NextRun(in, i, size);
        while (i < literalEnd) {
            const size_t n = literalEnd - i < kLongest ? literalEnd - i : kLongest;
            *out++ = uint8_t(n - 1);
            std::memcpy(out, in + i, n);
            out += n;
            i += n;
        }
    }
    return size_t(out - start);
}

size_t UnpackBits(const uint8_t* packed, size_t available, uint8_t* out, size_t size) {
    size_t at = 0, done = 0;
    while (done < size) {
        if (at >= available) return 0;
        const int8_t count = int8_t(packed[at++]);
        if (count >= 0) {
            const size_t n = size_t(count) + 1;
            if (at + n > available || done + n > size) return 0;
            std::memcpy(out + done, packed + at, n);
            at += n;
            done += n;
        } else if (count != -128) {  // -128 is no operation
            const size_t n = size_t(1 - count);
            if (at >= available || done + n > size) return 0;
            std::memset(out + done, packed[at++], n);
            done += n;
        }
    }
    return at;
}

bool UnpacksTo(const uint8_t* packed, size_t available, size_t size) {
    size_t at = 0, done = 0;
    while (at < available) {
        const int8_t count = int8_t(packed[at++]);
        if (count >= 0) {
            at += size_t(count) + 1;
            done += size_t(count) + 1;
        } else if (count != -128) {
            at += 1;
            done += size_t(1 - count);
        }
        if (done > size) return false;
    }
    return at == available && done == size;
}

}  // namespace vd::platform
