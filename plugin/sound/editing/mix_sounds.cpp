#include "sound/editing/mix_sounds.h"

#include "platform/media/new_sound_movie.h"
#include "platform/media/sample_reading.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <memory>
#include <mutex>
#include <new>
#include <vector>

namespace vd::sound {

namespace {

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

// The mix as it is read: the average of both sounds over the frames they share, then the longer
// one's own frames. Both sources' stores are shared, so their movies may go first.
class MixedPairStore final : public media::SampleStore {
public:
    MixedPairStore(media::Media one, media::Media two, bool firstIsLonger, int64_t common, int64_t total,
                   const media::SampleDescription& description)
        : one_(std::move(one)), two_(std::move(two)), firstIsLonger_(firstIsLonger), common_(common), total_(total),
          description_(description), bytesPerFrame_(media::BytesPerFrame(description)) {}

    bool ByteAddressable() const override { return true; }

    media::Status ReadBytes(int64_t byteOffset, size_t size, uint8_t* out) const override {
        const int64_t first = byteOffset / bytesPerFrame_, count = int64_t(size) / bytesPerFrame_;
        if (byteOffset < 0 || byteOffset % bytesPerFrame_ != 0 || int64_t(size) % bytesPerFrame_ != 0 ||
            first > total_ || count > total_ - first)
            return media::MediaFailure(util::kEndOfFile, "read past the mix");
        const int64_t averaged = std::max<int64_t>(0, std::min(first + count, common_) - first);
        if (averaged > 0) {
            const size_t bytes = size_t(averaged * bytesPerFrame_);
            std::lock_guard<std::mutex> lock(mutex_);  // the scratch block is shared by the readers
            try {
                scratch_.resize(bytes);
            } catch (const std::bad_alloc&) {
                return media::MediaFailure(util::kMemoryFull, "no memory for the mix");
            }
            if (media::Status s = media::ReadStoredBytesInto(one_, first, averaged, scratch_.data())) return s;
            if (media::Status s = media::ReadStoredBytesInto(two_, first, averaged, out)) return s;
            if (media::Status s = AverageSamples(scratch_, {out, bytes}, description_)) return s;
        }
        if (averaged < count) {
            const media::Media& longer = firstIsLonger_ ? one_ : two_;
            if (media::Status s = media::ReadStoredBytesInto(longer, first + averaged, count - averaged,
                                                             out + averaged * bytesPerFrame_))
                return s;
        }
        return util::kNoError;
    }

private:
    media::Media one_, two_;
    bool firstIsLonger_;
    int64_t common_, total_;
    media::SampleDescription description_;
    int64_t bytesPerFrame_;
    mutable std::mutex mutex_;
    mutable std::vector<uint8_t> scratch_;
};

}  // namespace

media::Status AverageSamples(std::span<const uint8_t> a, std::span<uint8_t> b,
                             const media::SampleDescription& description) {
    if (description.numberOfChannels != 1 && description.numberOfChannels != 2)
        return media::MediaFailure(util::kUnimplemented, "only mono and stereo sounds are mixed");
    const media::FourCharCode format = description.dataFormat;
    constexpr bool kLittleEndianMachine = std::endian::native == std::endian::little;
    if (format == media::kFormatRaw && description.sampleSize == 8) {
        for (size_t i = 0; i < b.size(); ++i) b[i] = uint8_t((unsigned(a[i]) + unsigned(b[i])) >> 1);
    } else if (format == media::kFormatSowt && description.sampleSize == 16) {
        Average16<!kLittleEndianMachine>(a, b);
    } else if (format == media::kFormatTwos && description.sampleSize == 16) {
        Average16<kLittleEndianMachine>(a, b);
    } else {
        return media::MediaFailure(util::kUnimplemented, "only 16-bit and unsigned 8-bit samples are mixed");
    }
    return util::kNoError;
}

media::Status MixSounds(const media::Movie& first, const media::Movie& second, media::Movie& mixed) {
    const media::Track* one = SoundTrackOf(first);
    const media::Track* two = SoundTrackOf(second);
    if (!one || !two) return media::MediaFailure(util::kInvalidTrack, "a sound to mix has no sound track");
    const int64_t length1 = one->media.Duration(), length2 = two->media.Duration();
    const int64_t common = std::min(length1, length2);
    const media::Track* longer = length1 > length2 ? one : two;
    const media::SampleDescription description =
        common > 0 ? two->media.Descriptions().front() : longer->media.Descriptions().front();
    const int bytesPerFrame = media::BytesPerFrame(description);
    if (bytesPerFrame == 0) return media::MediaFailure(util::kUnimplemented, "only PCM sounds are mixed");
    const int64_t total = std::max(length1, length2);
    if (uint64_t(total) > media::kMaxReadBytes / unsigned(bytesPerFrame))
        return media::SoundTooLarge("the mix is too long to hold");

    // Everything that could refuse the mix is checked here, before a sample is read: the mix itself
    // is made as it is read.
    if (common > 0) {
        int64_t frames = common;
        if (media::Status s = media::CheckStoredBytes(one->media, 0, frames)) return s;
        if (media::Status s = media::CheckStoredBytes(two->media, 0, frames)) return s;
        if (media::BytesPerFrame(one->media.Descriptions().front()) != bytesPerFrame)
            return media::MediaFailure(util::kBadParameter, "the sounds' frames differ in size");
        if (media::Status s = AverageSamples({}, {}, description)) return s;
    }
    if (BytesPerFrame(longer->media.Descriptions().front()) != bytesPerFrame)
        return media::MediaFailure(util::kBadParameter, "the sounds' frames differ in size");
    int64_t rest = total - common;
    if (rest > 0)
        if (media::Status s = media::CheckStoredBytes(longer->media, common, rest)) return s;

    try {
        media::Movie made;
        if (media::Status s = media::NewMemorySoundMovie(two->media.timeScale, made)) return s;
        media::Track& track = *made.FirstSoundTrack();
        if (common == 0) track.media.timeScale = longer->media.timeScale;
        auto store = std::make_shared<MixedPairStore>(one->media, two->media, longer == one, common, total, description);
        if (media::Status s = track.media.AppendRun(media::SampleRun{std::move(store), 0, total, 1}, description)) return s;
        track.InsertMedia(0);
        mixed = std::move(made);
    } catch (const std::bad_alloc&) {
        return media::MediaFailure(util::kMemoryFull, "no memory for the mix");
    }
    return util::kNoError;
}

}  // namespace vd::sound
