#include "platform/media/mixed_sample_store.h"

#include "platform/media/new_sound_movie.h"
#include "platform/media/sound_description.h"

#include <algorithm>
#include <bit>
#include <new>

namespace vd::media {

namespace {

constexpr int64_t kBytesPerFrame = 4;
constexpr int64_t kSkipBlock = 65536;

}  // namespace

MixedSampleStore::MixedSampleStore(Movie&& movie, RenderOptions options)
    : movie_(std::move(movie)), options_(std::move(options)) {}

MixedSampleStore::~MixedSampleStore() = default;

Status MixedSampleStore::Restart() const {
    source_.reset();
    nextFrame_ = 0;
    return MixedBlockSource::Open(movie_, CdQualityWav(), options_, source_);
}

Status MixedSampleStore::ReadBytes(int64_t byteOffset, size_t size, uint8_t* out) const {
    static_assert(std::endian::native == std::endian::little, "the mix's 16-bit samples are handed out as 'sowt' bytes");
    if (byteOffset < 0 || byteOffset % kBytesPerFrame != 0 || size % size_t(kBytesPerFrame) != 0)
        return MediaFailure(util::kBadParameter, "a read of the mix that does not fall on whole frames");
    std::lock_guard<std::mutex> lock(mutex_);
    const int64_t first = byteOffset / kBytesPerFrame;
    try {
        if (!source_ || first < nextFrame_)
            if (Status s = Restart()) return s;
        while (nextFrame_ < first) {
            const auto skip = size_t(std::min(kSkipBlock, first - nextFrame_));
            skipped_.resize(skip * 2);
            size_t got = 0;
            if (Status s = source_->Read(skipped_.data(), skip, got)) return s;
            if (got < skip) return MediaFailure(util::kEndOfFile, "read past the end of the mix");
            nextFrame_ += int64_t(got);
        }
    } catch (const std::bad_alloc&) {
        return MediaFailure(util::kMemoryFull, "no memory to mix the sound");
    }
    const size_t frames = size / size_t(kBytesPerFrame);
    size_t got = 0;
    if (Status s = source_->Read(reinterpret_cast<int16_t*>(out), frames, got)) return s;
    nextFrame_ += int64_t(got);
    if (got < frames) return MediaFailure(util::kEndOfFile, "read past the end of the mix");
    return util::kNoError;
}

Status MixOnReadMovie(Movie&& movie, const RenderOptions& options, Movie& mixed) {
    const OutputFormat format = CdQualityWav();
    if (!movie.FirstSoundTrack()) return MediaFailure(util::kNoSoundTrack, "the movie has no sound track");
    const int64_t frames = StatedMixFrames(movie, format);
    try {
        Movie made;
        if (Status s = NewMemorySoundMovie(format.sampleRate, made)) return s;
        Track& track = *made.FirstSoundTrack();
        const SampleDescription description = PcmSoundDescription(kFormatSowt, format.channels, 16, format.sampleRate);
        track.media.AddDescription(description);
        auto store = std::make_shared<MixedSampleStore>(std::move(movie), options);
        if (Status s = track.media.AppendRun(SampleRun{std::move(store), 0, frames, 1}, description)) return s;
        track.InsertMedia(0);
        mixed = std::move(made);
    } catch (const std::bad_alloc&) {
        return MediaFailure(util::kMemoryFull, "no memory for the mixed sound");
    }
    return util::kNoError;
}

}  // namespace vd::media
