// A libvips target that writes into a vector of ours. A saver writing to memory would grow its
// own buffer by copying and leave a blob to be copied out again; here the vector has room for the
// largest file expected before the first byte (room that is never touched costs nothing), and the
// file is written once, in place. Seeking and reading back work, as TIFF's writer needs them.
// The pages are made ahead of the writer rather than faulted in one by one (see fresh_memory.h):
// for a file that will fill the room (an uncompressed picture), all of them at once on a helper
// thread, while the picture is still being decoded; for others a few megabytes ahead of each write.
#pragma once

#include "platform/graphics/vips_owners.h"
#include "util/status_codes.h"

#include <vips/vips.h>

#include <cstddef>
#include <atomic>
#include <cstdint>
#include <thread>
#include <vector>

namespace vd::platform {

class VectorTarget {
public:
    // out is emptied, and filled by whatever writes to Target(). filled: the file is expected to
    // take about all of expected.
    VectorTarget(std::vector<uint8_t>& out, size_t expected, bool filled);
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
    void StopPreparing();

    std::vector<uint8_t>& out_;
    size_t position_ = 0;
    size_t prepared_ = 0;  // bytes of the room whose pages are made
    std::thread preparer_;  // making all of them
    std::atomic<bool> stopPreparing_{false};
    util::Status status_ = util::kNoError;
    VipsTargetCustom* target_ = nullptr;
};

}  // namespace vd::platform
