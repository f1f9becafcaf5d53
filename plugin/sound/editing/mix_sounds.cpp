#include "sound/editing/mix_sounds.h"

#include "platform/media/new_sound_movie.h"
#include "platform/media/sample_reading.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <new>
#include <vector>

namespace vd::sound {

namespace {

constexpr int64_t kBlockFrames = 44100;
constexpr media::Status kBlocksDiffer = -1;

uint16_t Swapped(uint16_t v) { return uint16_t(v >> 8 | v << 8); }

template <bool kSwap>
void Average16(std::span<const uint8_t> a, std::span<uint8_t> b) {
    for (size_t i = 0; i + 1 < b.size(); i += 2) {
        uint16_t x, y;
        std::memcpy(&x, a.data() + i, 2);
        std::memcpy(&y, b.data() + i, 2);
        if constexpr (kSwap) x = Swapped(x), y = Swapped(y);
        // An arithmetic shift of the sum is the floor of half of it, for negative sums too.
        uint16_t mean = uint16_t((int32_t(int16_t(x)) + int32_t(int16_t(y))) >> 1);
        if constexpr (kSwap) mean = Swapped(mean);
        std::memcpy(b.data() + i, &mean, 2);
    }
}

const media::Track* SoundTrackOf(const media::Movie& movie) {
    const media::Track* track = movie.FirstSoundTrack();
    return track && !track->media.Descriptions().empty() ? track : nullptr;
}

}  // namespace

media::Status AverageSamples(std::span<const uint8_t> a, std::span<uint8_t> b,
                             const media::SampleDescription& description) {
    if (description.numberOfChannels != 1 && description.numberOfChannels != 2)
        return media::MediaFailure(media::kUnimplemented, "only mono and stereo sounds are mixed");
    const media::FourCharCode format = description.dataFormat;
    constexpr bool kLittleEndianMachine = std::endian::native == std::endian::little;
    if (format == media::kFormatRaw && description.sampleSize == 8) {
        for (size_t i = 0; i < b.size(); ++i) b[i] = uint8_t((unsigned(a[i]) + unsigned(b[i])) >> 1);
    } else if (format == media::kFormatSowt && description.sampleSize == 16) {
        Average16<!kLittleEndianMachine>(a, b);
    } else if (format == media::kFormatTwos && description.sampleSize == 16) {
        Average16<kLittleEndianMachine>(a, b);
    } else {
        return media::MediaFailure(media::kUnimplemented, "only 16-bit and unsigned 8-bit samples are mixed");
    }
    return media::kNoError;
}

media::Status MixSounds(const media::Movie& first, const media::Movie& second, media::Movie& mixed) {
    const media::Track* one = SoundTrackOf(first);
    const media::Track* two = SoundTrackOf(second);
    if (!one || !two) return media::MediaFailure(media::kInvalidTrack, "a sound to mix has no sound track");
    const int64_t length1 = one->media.Duration(), length2 = two->media.Duration();
    const int64_t common = std::min(length1, length2);
    const media::Track* longer = length1 > length2 ? one : two;
    const media::SampleDescription description =
        common > 0 ? two->media.Descriptions().front() : longer->media.Descriptions().front();
    const int bytesPerFrame = media::BytesPerFrame(description);
    if (bytesPerFrame == 0) return media::MediaFailure(media::kUnimplemented, "only PCM sounds are mixed");
    const int64_t total = std::max(length1, length2);
    if (uint64_t(total) > media::kMaxReadBytes / unsigned(bytesPerFrame))
        return media::SoundTooLarge("the mix is too long to hold");

    try {
        // The result is made in one buffer of its final size: growing it block by block would need
        // twice the memory at the moment it moves.
        std::vector<uint8_t> out(size_t(total) * size_t(bytesPerFrame));
        std::vector<uint8_t> block1, block2;
        for (int64_t at = 0; at < common; at += kBlockFrames) {
            const int64_t frames = std::min(kBlockFrames, common - at);
            if (media::Status s = media::ReadStoredBytes(one->media, at, frames, block1)) return s;
            if (media::Status s = media::ReadStoredBytes(two->media, at, frames, block2)) return s;
            const int bpf1 = media::BytesPerFrame(one->media.Descriptions().front());
            if (bpf1 == 0 || block1.size() / size_t(bpf1) != block2.size() / size_t(bytesPerFrame))
                return media::MediaFailure(kBlocksDiffer, "the sounds gave blocks of different lengths");
            if (block1.size() != block2.size())
                return media::MediaFailure(media::kBadParameter, "the sounds' frames differ in size");
            if (media::Status s = AverageSamples(block1, block2, description)) return s;
            std::memcpy(out.data() + size_t(at) * size_t(bytesPerFrame), block2.data(), block2.size());
        }
        if (BytesPerFrame(longer->media.Descriptions().front()) != bytesPerFrame)
            return media::MediaFailure(media::kBadParameter, "the sounds' frames differ in size");
        for (int64_t at = common; at < total; at += kBlockFrames) {
            const int64_t frames = std::min(kBlockFrames, total - at);
            if (media::Status s = media::ReadStoredBytes(longer->media, at, frames, block1)) return s;
            std::memcpy(out.data() + size_t(at) * size_t(bytesPerFrame), block1.data(), block1.size());
        }

        media::Movie made;
        if (media::Status s = media::NewMemorySoundMovie(two->media.timeScale, made)) return s;
        media::Track& track = *made.FirstSoundTrack();
        if (common == 0) track.media.timeScale = longer->media.timeScale;
        if (media::Status s = track.media.AdoptSamples(description, std::move(out), total)) return s;
        track.InsertMedia(0);
        mixed = std::move(made);
    } catch (const std::bad_alloc&) {
        return media::MediaFailure(media::kMemoryFull, "no memory for the mix");
    }
    return media::kNoError;
}

}  // namespace vd::sound
