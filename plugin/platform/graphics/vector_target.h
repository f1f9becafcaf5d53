// A libvips target that writes into a vector of ours. A saver writing to memory would grow its
// own buffer by copying and leave a blob to be copied out again; here the vector has room for the
// largest file expected before the first byte (room that is never touched costs nothing), and the
// file is written once, in place. Seeking and reading back work, as TIFF's writer needs them.
// The pages are made a few megabytes ahead of the writer, in one call each time, rather than
// faulted in one by one (see fresh_memory.h); savers write on a thread of their own, so this
// happens while the picture is still being decoded.
#pragma once

#include "platform/graphics/vips_owners.h"
#include "util/status_codes.h"

#include <vips/vips.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace vd::platform {

class VectorTarget {
public:
    // out is emptied, and filled by whatever writes to Target().
    VectorTarget(std::vector<uint8_t>& out, size_t expected);
    ~VectorTarget();
    VectorTarget(const VectorTarget&) = delete;
    VectorTarget& operator=(const VectorTarget&) = delete;

    // Null when libvips could not make it (or the room could not be had).
    VipsTarget* Target() const;
    // util::kMemoryFull when a write could not be stored.
    util::Status Status() const { return status_; }

private:
    static gint64 OnWrite(VipsTargetCustom*, const void* data, gint64 length, void* self);
    static gint64 OnRead(VipsTargetCustom*, void* buffer, gint64 length, void* self);
    static gint64 OnSeek(VipsTargetCustom*, gint64 offset, int whence, void* self);
    static int OnEnd(VipsTargetCustom*, void* self);
    void PrepareUpTo(size_t end);

    std::vector<uint8_t>& out_;
    size_t position_ = 0;
    size_t prepared_ = 0;  // bytes of the room whose pages are made
    util::Status status_ = util::kNoError;
    VipsTargetCustom* target_ = nullptr;
};

}  // namespace vd::platform
