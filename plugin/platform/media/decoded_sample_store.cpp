#include "platform/media/decoded_sample_store.h"

#include "platform/common/fresh_memory.h"

#include <algorithm>
#include <cstring>

namespace vd::media {

bool FloatBuffer::Grow(size_t capacity) {
    if (capacity > SIZE_MAX / sizeof(float)) return false;
    auto* grown = static_cast<float*>(std::realloc(data_, capacity * sizeof(float)));
    if (!grown) return false;
    data_ = grown;
    platform::AdviseHugePages(data_ + capacity_, (capacity - capacity_) * sizeof(float));
    capacity_ = capacity;
    return true;
}

float* FloatBuffer::Extend(size_t count) {
    if (count > capacity_ - size_ && !Grow(std::max(size_ + count, capacity_ + capacity_ / 2 + 4096))) return nullptr;
    return data_ + size_;
}

void FloatBuffer::Reserve(size_t count) {
    if (count > capacity_) Grow(count);
}

Status DecodedSampleStore::ReadFloatFrames(int64_t firstFrame, int64_t frames, float* out, int64_t* framesRead) {
    *framesRead = 0;
    if (firstFrame < 0 || frames < 0) return MediaFailure(util::kInvalidTime, "negative sample range");
    const int64_t available = std::max<int64_t>(0, std::min(frames, sound_.Frames() - firstFrame));
    if (available > 0)
        std::memcpy(out, sound_.samples.Data() + (sound_.skipped + firstFrame) * sound_.channels,
                    size_t(available) * size_t(sound_.channels) * sizeof(float));
    *framesRead = available;
    return util::kNoError;
}

}  // namespace vd::media
