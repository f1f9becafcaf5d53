#include "container/sound_container.h"

#include "container/sound_resource.h"
#include "container/stream_types.h"
#include "container/streams.h"
#include "fmapi/args/host_binary.h"
#include "fmapi/args/results.h"
#include "platform/media/sound_converter.h"

#include <new>

namespace vd::container {

namespace {

constexpr int32_t kStoredRate = 44100;
constexpr uint64_t kMaxStreamSamples = 0xFFFFFFFFull - kSoundSamplesOffset;  // a stream's size is 32 bits

}  // namespace

int32_t SoundResourceOfMovie(const media::Movie& movie, std::vector<uint8_t>& stream) {
    const media::Track* track = movie.FirstSoundTrack();
    if (!track) return util::kInvalidTrack;
    // The samples are converted straight into the stream after room for its header, so the sound is
    // held once, in its final form.
    std::vector<uint8_t> made;
    try {
        made.resize(kSoundSamplesOffset);
    } catch (const std::bad_alloc&) {
        return util::kMemoryFull;
    }
    if (media::Status s = media::ConvertToMono8(track->media, kStoredRate, kMaxStreamSamples, made)) return s;
    WriteSoundResourceHeader(made.data(), made.size() - kSoundSamplesOffset);
    stream = std::move(made);
    return 0;
}

int32_t StoreMovieAsSound(FMX_Data* result, const media::Movie& movie) {
    std::vector<uint8_t> stream;
    if (int32_t e = SoundResourceOfMovie(movie, stream)) return e;
    fmapi::OwnedBinaryData binary(fmapi::NewBinaryData());
    if (FMX_ErrCode e = AddTypedStream(binary.get(), kSoundStream, uint32_t(stream.size()), stream.data())) return e;
    return SetResultBinary(result, binary.get());
}

}  // namespace vd::container
