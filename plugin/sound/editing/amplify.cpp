#include "sound/editing/amplify.h"

#include "platform/media/new_sound_movie.h"
#include "platform/media/sample_reading.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>
#include <memory>
#include <new>
#include <vector>

namespace vd::sound {

namespace {

constexpr float kFullScale = 32767.0f;
constexpr int64_t kBlockFrames = 65536;

// The samples are copied out and back rather than cast, since the bytes need not be aligned.
template <bool kSwap>
int16_t Load(const uint8_t* at) {
    uint16_t raw;
    std::memcpy(&raw, at, 2);
    if constexpr (kSwap) raw = uint16_t(raw >> 8 | raw << 8);
    return int16_t(raw);
}

template <bool kSwap>
void Store(uint8_t* at, int16_t value) {
    uint16_t raw = uint16_t(value);
    if constexpr (kSwap) raw = uint16_t(raw >> 8 | raw << 8);
    std::memcpy(at, &raw, 2);
}

// The largest absolute sample; -32768 has no positive twin and does not count.
template <bool kSwap>
int Peak(std::span<const uint8_t> bytes) {
    int peak = 0;
    for (size_t i = 0; i + 1 < bytes.size(); i += 2) {
        const int x = Load<kSwap>(bytes.data() + i);
        if (x != -32768) peak = std::max(peak, std::abs(x));
    }
    return peak;
}

float GainForPeak(int peak) { return peak == 0 ? 1.0f : kFullScale / float(peak); }

template <bool kSwap>
float NormalizingGain(std::span<const uint8_t> bytes) { return GainForPeak(Peak<kSwap>(bytes)); }

template <bool kSwap>
void Scale(std::span<uint8_t> bytes, float gain, float ceiling, float floor) {
    for (size_t i = 0; i + 1 < bytes.size(); i += 2) {
        float y = float(Load<kSwap>(bytes.data() + i)) * gain;
        if (y != y) y = 0.0f;  // silence times an infinite gain stays silence
        y = std::min(y, ceiling);
        y = std::max(y, floor);
        Store<kSwap>(bytes.data() + i, int16_t(y));  // the conversion truncates toward zero
    }
}

template <bool kSwap>
void Amplify(std::span<uint8_t> bytes, float gain, bool normalize, float limit) {
    if (normalize) gain = NormalizingGain<kSwap>(bytes);
    const float ceiling = limit * kFullScale;
    Scale<kSwap>(bytes, gain, ceiling, -ceiling - 1.0f);
}

// 'sowt' is little-endian, 'twos' big-endian; whichever is not this machine's order is swapped.
bool SwapsBytes(const media::SampleDescription& description) {
    return (description.dataFormat == media::kFormatTwos) == (std::endian::native == std::endian::little);
}

media::Status CheckAmplifiable(const media::SampleDescription& description, float gain, float limit) {
    if (std::isnan(gain) || std::isnan(limit)) return media::MediaFailure(util::kBadParameter, "no gain or limit");
    const media::FourCharCode format = description.dataFormat;
    if (format == media::kFormatRaw || (format == media::kFormatTwos && description.sampleSize == 8))
        return media::MediaFailure(util::kUnimplemented, "8-bit samples are not amplified");
    if ((format != media::kFormatSowt && format != media::kFormatTwos) || description.sampleSize != 16)
        return media::MediaFailure(util::kCorruptData, "only 16-bit PCM samples are amplified");
    return util::kNoError;
}

// Normalizing looks at every sample before the first one is scaled: a pass of its own over the
// source, a block at a time.
media::Status NormalizingGain(const media::Media& media, int64_t frames, const media::SampleDescription& description,
                              float& gain) {
    const int64_t bytesPerFrame = media::BytesPerFrame(description);
    const bool swap = SwapsBytes(description);
    int peak = 0;
    try {
        std::vector<uint8_t> block;
        for (int64_t at = 0; at < frames; at += kBlockFrames) {
            if (media::Status s = media::StopRequestStatus()) return s;
            const int64_t count = std::min(kBlockFrames, frames - at);
            block.resize(size_t(count * bytesPerFrame));
            if (media::Status s = media::ReadStoredBytesInto(media, at, count, block.data())) return s;
            peak = std::max(peak, swap ? Peak<true>(block) : Peak<false>(block));
        }
    } catch (const std::bad_alloc&) {
        return media::MediaFailure(util::kMemoryFull, "no memory for the samples");
    }
    gain = GainForPeak(peak);
    return util::kNoError;
}

// The source's samples scaled as they are read: an amplified sound is stored or rendered a block
// at a time and never held whole. The source's stores are shared, so the source movie may go first.
class AmplifiedSampleStore final : public media::SampleStore {
public:
    AmplifiedSampleStore(media::Media source, int64_t frames, const media::SampleDescription& description, float gain,
                         float limit)
        : source_(std::move(source)), frames_(frames), description_(description), gain_(gain), limit_(limit) {}

    bool ByteAddressable() const override { return true; }

    media::Status ReadBytes(int64_t byteOffset, size_t size, uint8_t* out) const override {
        const int64_t bytesPerFrame = media::BytesPerFrame(description_);
        const int64_t first = byteOffset / bytesPerFrame, count = int64_t(size) / bytesPerFrame;
        if (byteOffset < 0 || byteOffset % bytesPerFrame != 0 || int64_t(size) % bytesPerFrame != 0 || first > frames_ ||
            count > frames_ - first)
            return media::MediaFailure(util::kEndOfFile, "read past the amplified samples");
        if (media::Status s = media::ReadStoredBytesInto(source_, first, count, out)) return s;
        const std::span<uint8_t> bytes(out, size);
        const float ceiling = limit_ * kFullScale;
        if (SwapsBytes(description_)) Scale<true>(bytes, gain_, ceiling, -ceiling - 1.0f);
        else Scale<false>(bytes, gain_, ceiling, -ceiling - 1.0f);
        return util::kNoError;
    }

private:
    media::Media source_;
    int64_t frames_;
    media::SampleDescription description_;
    float gain_, limit_;
};

}  // namespace

media::Status AmplifySamples(std::span<uint8_t> bytes, const media::SampleDescription& description, float gain,
                             float limit) {
    if (media::Status s = CheckAmplifiable(description, gain, limit)) return s;
    const bool normalize = limit == kNormalizeLimit;
    limit = normalize ? 1.0f : std::clamp(limit, 0.0f, 1.0f);
    if (SwapsBytes(description)) Amplify<true>(bytes, gain, normalize, limit);
    else Amplify<false>(bytes, gain, normalize, limit);
    return util::kNoError;
}

media::Status AmplifyMovie(const media::Movie& source, float gain, float limit, media::Movie& amplified) {
    const media::Track* track = source.FirstSoundTrack();
    if (!track) return media::MediaFailure(util::kInvalidTrack, "the movie has no sound track");
    if (track->media.Descriptions().empty()) return media::MediaFailure(util::kInvalidMedia, "the sound has no media");
    const media::SampleDescription description = track->media.Descriptions().front();
    int64_t frames = track->media.Duration();
    if (media::Status s = media::CheckStoredBytes(track->media, 0, frames)) return s;
    if (media::Status s = CheckAmplifiable(description, gain, limit)) return s;
    if (limit == kNormalizeLimit) {
        if (media::Status s = NormalizingGain(track->media, frames, description, gain)) return s;
        limit = 1.0f;
    } else {
        limit = std::clamp(limit, 0.0f, 1.0f);
    }
    try {
        media::Movie made;
        if (media::Status s = media::NewMemorySoundMovie(track->media.timeScale, made)) return s;
        media::Track& added = *made.FirstSoundTrack();
        auto store = std::make_shared<AmplifiedSampleStore>(track->media, frames, description, gain, limit);
        if (media::Status s = added.media.AppendRun(media::SampleRun{std::move(store), 0, frames, 1}, description)) return s;
        added.InsertMedia(0);
        amplified = std::move(made);
    } catch (const std::bad_alloc&) {
        return media::MediaFailure(util::kMemoryFull, "no memory for the amplified sound");
    }
    return util::kNoError;
}

}  // namespace vd::sound
