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

int32_t SoundResourceMadeBy(const SoundSamplesMaker& fill, std::vector<uint8_t>& stream) {
    // The samples are converted straight into the stream after room for its header, so the sound is
    // held once, in its final form.
    std::vector<uint8_t> made;
    try {
        made.resize(kSoundSamplesOffset);
    } catch (const std::bad_alloc&) {
        return util::kMemoryFull;
    }
    if (int32_t e = fill(kStoredRate, kMaxStreamSamples, made)) return e;
    WriteSoundResourceHeader(made.data(), made.size() - kSoundSamplesOffset);
    stream = std::move(made);
    return 0;
}

SoundSamplesMaker ConvertedTrack(const media::Track& track) {
    return [&track](int32_t rate, uint64_t maxBytes, std::vector<uint8_t>& out) {
        return media::ConvertToMono8(track.media, rate, maxBytes, out);
    };
}

}  // namespace

int32_t SoundResourceOfMovie(const media::Movie& movie, std::vector<uint8_t>& stream) {
    const media::Track* track = movie.FirstSoundTrack();
    if (!track) return util::kInvalidTrack;
    return SoundResourceMadeBy(ConvertedTrack(*track), stream);
}

int32_t StoreMovieAsSound(FMX_Data* result, const media::Movie& movie) {
    const media::Track* track = movie.FirstSoundTrack();
    if (!track) return util::kInvalidTrack;
    return StoreSoundSamples(result, ConvertedTrack(*track));
}

int32_t StoreSoundSamples(FMX_Data* result, const SoundSamplesMaker& fill) {
    std::vector<uint8_t> stream;
    if (int32_t e = SoundResourceMadeBy(fill, stream)) return e;
    fmapi::OwnedBinaryData binary(fmapi::NewBinaryData());
    if (FMX_ErrCode e = AddTypedStream(binary.get(), kSoundStream, uint32_t(stream.size()), stream.data())) return e;
    return SetResultBinary(result, binary.get());
}

}  // namespace vd::container
