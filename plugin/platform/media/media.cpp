#include "platform/media/media.h"

#include "platform/media/mac_time.h"

#include <new>

namespace vd::media {

Media::Media(FourCharCode type, int32_t scale)
    : mediaType(type), timeScale(scale), creationTime(MacSecondsNow()), modificationTime(creationTime) {}

int64_t Media::Duration() const {
    if (mediaType != kSoundMediaType) return nonSoundDuration_;
    int64_t total = 0;
    for (const auto& run : runs_) total += run.frameCount;
    return total;
}

int Media::AddDescription(const SampleDescription& description) {
    for (size_t i = 0; i < descriptions_.size(); ++i)
        if (descriptions_[i] == description) return int(i) + 1;
    descriptions_.push_back(description);
    return int(descriptions_.size());
}

Status Media::CheckAddedSamples(const SampleDescription& description, size_t size, int64_t frames) const {
    if (mediaType != kSoundMediaType) return MediaFailure(util::kInvalidMedia, "samples appended to a media that is not sound");
    const int bytesPerFrame = BytesPerFrame(description);
    if (bytesPerFrame == 0) return MediaFailure(util::kCorruptData, "only PCM samples are added in memory");
    if (frames < 0 || uint64_t(frames) > SIZE_MAX / unsigned(bytesPerFrame) || size != size_t(frames) * size_t(bytesPerFrame))
        return MediaFailure(util::kBadParameter, "sample bytes do not match the frame count");
    if (!descriptions_.empty() && (description.numberOfChannels != descriptions_[0].numberOfChannels ||
                                   description.sampleRate != descriptions_[0].sampleRate))
        return MediaFailure(util::kCorruptData, "a media keeps one channel count and rate");
    return util::kNoError;
}

Status Media::AdoptSamples(const SampleDescription& description, std::vector<uint8_t>&& bytes, int64_t frames) {
    if (Status s = CheckAddedSamples(description, bytes.size(), frames)) return s;
    if (frames == 0) return util::kNoError;
    try {
        const int index = AddDescription(description);
        runs_.push_back(SampleRun{std::make_shared<MemorySampleStore>(std::move(bytes)), 0, frames, index});
    } catch (const std::bad_alloc&) {
        return MediaFailure(util::kMemoryFull, "no memory for the media's runs");
    }
    modificationTime = MacSecondsNow();
    return util::kNoError;
}

Status Media::AppendSamples(const SampleDescription& description, const void* bytes, size_t size, int64_t frames) {
    if (Status s = CheckAddedSamples(description, size, frames)) return s;
    if (frames == 0) return util::kNoError;
    const int bytesPerFrame = BytesPerFrame(description);
    try {
        const int index = AddDescription(description);
        if (!runs_.empty() && runs_.back().descriptionIndex == index) {
            auto* memory = dynamic_cast<MemorySampleStore*>(runs_.back().store.get());
            // Extend in place only when the run ends where the store does; other movies that
            // share the store keep their own frame ranges and do not see the new frames.
            if (memory && runs_.back().firstFrame + runs_.back().frameCount == memory->Size() / bytesPerFrame) {
                if (Status s = memory->Append(static_cast<const uint8_t*>(bytes), size)) return s;
                runs_.back().frameCount += frames;
                modificationTime = MacSecondsNow();
                return util::kNoError;
            }
        }
        auto store = std::make_shared<MemorySampleStore>();
        if (Status s = store->Append(static_cast<const uint8_t*>(bytes), size)) return s;
        runs_.push_back(SampleRun{std::move(store), 0, frames, index});
    } catch (const std::bad_alloc&) {
        return MediaFailure(util::kMemoryFull, "no memory for the media's runs");
    }
    modificationTime = MacSecondsNow();
    return util::kNoError;
}

Status Media::AppendRun(const SampleRun& run, const SampleDescription& description) {
    if (run.frameCount <= 0) return util::kNoError;
    try {
        SampleRun added = run;
        added.descriptionIndex = AddDescription(description);
        if (!runs_.empty()) {
            SampleRun& last = runs_.back();
            if (last.store == added.store && last.descriptionIndex == added.descriptionIndex &&
                last.firstFrame + last.frameCount == added.firstFrame) {
                last.frameCount += added.frameCount;
                return util::kNoError;
            }
        }
        runs_.push_back(std::move(added));
    } catch (const std::bad_alloc&) {
        return MediaFailure(util::kMemoryFull, "no memory for the media's runs");
    }
    return util::kNoError;
}

}  // namespace vd::media
