#include "sound/editing/amplify.h"

#include "platform/media/new_sound_movie.h"
#include "sound/movie_source.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>
#include <vector>

namespace vd::sound {

namespace {

constexpr float kFullScale = 32767.0f;

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

template <bool kSwap>
float NormalizingGain(std::span<const uint8_t> bytes) {
    int peak = 0;
    for (size_t i = 0; i + 1 < bytes.size(); i += 2) {
        const int x = Load<kSwap>(bytes.data() + i);
        if (x != -32768) peak = std::max(peak, std::abs(x));
    }
    return peak == 0 ? 1.0f : kFullScale / float(peak);
}

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

}  // namespace

media::Status AmplifySamples(std::span<uint8_t> bytes, const media::SampleDescription& description, float gain,
                             float limit) {
    const bool normalize = limit == kNormalizeLimit;
    if (std::isnan(gain) || std::isnan(limit)) return media::MediaFailure(media::kBadParameter, "no gain or limit");
    limit = normalize ? 1.0f : std::clamp(limit, 0.0f, 1.0f);
    const media::FourCharCode format = description.dataFormat;
    if (format == media::kFormatRaw || (format == media::kFormatTwos && description.sampleSize == 8))
        return media::MediaFailure(media::kUnimplemented, "8-bit samples are not amplified");
    if ((format != media::kFormatSowt && format != media::kFormatTwos) || description.sampleSize != 16)
        return media::MediaFailure(media::kBadSampleFormat, "only 16-bit PCM samples are amplified");
    // 'sowt' is little-endian, 'twos' big-endian; whichever is not this machine's order is swapped.
    const bool swap = (format == media::kFormatTwos) == (std::endian::native == std::endian::little);
    if (swap) Amplify<true>(bytes, gain, normalize, limit);
    else Amplify<false>(bytes, gain, normalize, limit);
    return media::kNoError;
}

media::Status AmplifyMovie(const media::Movie& source, float gain, float limit, media::Movie& amplified) {
    const media::Track* track = source.FirstSoundTrack();
    if (!track) return media::MediaFailure(media::kInvalidTrack, "the movie has no sound track");
    if (track->media.Descriptions().empty()) return media::MediaFailure(media::kInvalidMedia, "the sound has no media");
    const media::SampleDescription description = track->media.Descriptions().front();
    std::vector<uint8_t> samples;
    int64_t frames = 0;
    if (media::Status s = ReadAllSamples(track->media, samples, frames)) return s;
    if (media::Status s = AmplifySamples(samples, description, gain, limit)) return s;

    media::Movie made;
    if (media::Status s = media::NewMemorySoundMovie(track->media.timeScale, made)) return s;
    media::Track& added = *made.FirstSoundTrack();
    if (media::Status s = added.media.AdoptSamples(description, std::move(samples), frames)) return s;
    added.InsertMedia(0);
    amplified = std::move(made);
    return media::kNoError;
}

}  // namespace vd::sound
