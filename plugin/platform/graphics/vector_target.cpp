#include "platform/graphics/vector_target.h"

#include "platform/common/fresh_memory.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <new>
#include <system_error>

namespace vd::platform {

namespace {

// How far ahead of the writer pages are made: a few bands of a large picture.
constexpr size_t kPreparedAhead = size_t(8) << 20;

}  // namespace

VectorTarget::VectorTarget(std::vector<uint8_t>& out, size_t expected, bool filled) : out_(out) {
    out.clear();
    try {
        out.reserve(expected);
        AdviseHugePages(out.data(), out.capacity());
    } catch (const std::bad_alloc&) {
        status_ = util::kMemoryFull;
        return;
    }
    if (filled) {
        prepared_ = out.capacity();  // the writer leaves it to the helper
        try {
            preparer_ = std::thread([this, room = out.data(), size = out.capacity()] {
                for (size_t done = 0; done < size && !stopPreparing_; done += kPreparedAhead)
                    PrepareForWriting(room + done, std::min(kPreparedAhead, size - done));
            });
        } catch (const std::system_error&) {
            prepared_ = 0;  // no thread: the writer makes them as it goes
        }
    }
    target_ = vips_target_custom_new();
    if (!target_) return;
    g_signal_connect_data(target_, "write", G_CALLBACK(&OnWrite), this, nullptr, GConnectFlags(0));
    g_signal_connect_data(target_, "read", G_CALLBACK(&OnRead), this, nullptr, GConnectFlags(0));
    g_signal_connect_data(target_, "seek", G_CALLBACK(&OnSeek), this, nullptr, GConnectFlags(0));
    g_signal_connect_data(target_, "end", G_CALLBACK(&OnEnd), this, nullptr, GConnectFlags(0));
}

VectorTarget::~VectorTarget() {
    StopPreparing();
    if (target_) g_object_unref(target_);
}

void VectorTarget::StopPreparing() {
    stopPreparing_ = true;
    if (preparer_.joinable()) preparer_.join();
}

VipsTarget* VectorTarget::Target() const { return target_ ? &target_->parent_object : nullptr; }

gint64 VectorTarget::OnWrite(VipsTargetCustom*, const void* data, gint64 length, void* self) {
    auto& t = *static_cast<VectorTarget*>(self);
    if (length < 0) return -1;
    const auto* bytes = static_cast<const uint8_t*>(data);
    const size_t n = size_t(length), overlap = std::min(n, t.out_.size() - std::min(t.position_, t.out_.size()));
    // The room moves when the file outgrows it: the helper must not be making the old one.
    if (t.position_ + n > t.out_.capacity()) t.StopPreparing();
    t.PrepareUpTo(t.position_ + n);
    try {
        if (t.position_ > t.out_.size()) t.out_.resize(t.position_, 0);  // a seek past the end leaves a hole
        std::memcpy(t.out_.data() + t.position_, bytes, overlap);
        t.out_.insert(t.out_.end(), bytes + overlap, bytes + n);
    } catch (const std::bad_alloc&) {
        t.status_ = util::kMemoryFull;
        return -1;
    }
    t.position_ += n;
    return length;
}

void VectorTarget::PrepareUpTo(size_t end) {
    if (end <= prepared_ || prepared_ >= out_.capacity()) return;
    const size_t upTo = std::min(out_.capacity(), std::max(end, prepared_ + kPreparedAhead));
    PrepareForWriting(out_.data() + prepared_, upTo - prepared_);
    prepared_ = upTo;
}

gint64 VectorTarget::OnRead(VipsTargetCustom*, void* buffer, gint64 length, void* self) {
    auto& t = *static_cast<VectorTarget*>(self);
    if (length < 0) return -1;
    const size_t available = t.position_ < t.out_.size() ? t.out_.size() - t.position_ : 0;
    const size_t n = std::min(size_t(length), available);
    std::memcpy(buffer, t.out_.data() + t.position_, n);
    t.position_ += n;
    return gint64(n);
}

gint64 VectorTarget::OnSeek(VipsTargetCustom*, gint64 offset, int whence, void* self) {
    auto& t = *static_cast<VectorTarget*>(self);
    gint64 base = 0;
    if (whence == SEEK_CUR) base = gint64(t.position_);
    else if (whence == SEEK_END) base = gint64(t.out_.size());
    else if (whence != SEEK_SET) return -1;
    if (base + offset < 0) return -1;
    t.position_ = size_t(base + offset);
    return gint64(t.position_);
}

int VectorTarget::OnEnd(VipsTargetCustom*, void* self) {
    return static_cast<VectorTarget*>(self)->status_ == util::kNoError ? 0 : -1;
}

}  // namespace vd::platform
