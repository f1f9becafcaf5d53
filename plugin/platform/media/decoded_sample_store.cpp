#include "platform/media/decoded_sample_store.h"

#include <algorithm>
#include <cstring>

namespace vd::media {

Status DecodedSampleStore::ReadFloatFrames(int64_t firstFrame, int64_t frames, float* out, int64_t* framesRead) {
    *framesRead = 0;
    if (firstFrame < 0 || frames < 0) return MediaFailure(util::kInvalidTime, "negative sample range");
    const int64_t available = std::max<int64_t>(0, std::min(frames, sound_.Frames() - firstFrame));
    if (available > 0)
        std::memcpy(out, sound_.samples.data() + firstFrame * sound_.channels,
                    size_t(available) * size_t(sound_.channels) * sizeof(float));
    *framesRead = available;
    return util::kNoError;
}

}  // namespace vd::media
