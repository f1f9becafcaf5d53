// A track's media: its time scale (the sample rate for sound), dates, language, quality, sample
// descriptions and, for sound, its samples as an ordered list of runs over shared stores. A run
// is a frame range of one store with the description it is read by, so a selection of a media is
// a new list of runs over the same stores, and no samples move.
#pragma once

#include "platform/media/errors.h"
#include "platform/media/four_char_code.h"
#include "platform/media/sample_store.h"
#include "platform/media/sound_description.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace vd::media {

inline constexpr FourCharCode kSoundMediaType = FourCC("soun");
inline constexpr FourCharCode kVideoMediaType = FourCC("vide");
inline constexpr FourCharCode kTextMediaType = FourCC("text");

struct SampleRun {
    std::shared_ptr<SampleStore> store;
    int64_t firstFrame = 0;      // in the store
    int64_t frameCount = 0;
    int descriptionIndex = 1;    // 1-based, into the media's descriptions
};

class Media {
public:
    explicit Media(FourCharCode mediaType = kSoundMediaType, int32_t timeScale = 44100);

    FourCharCode mediaType;
    int32_t timeScale;
    uint32_t creationTime;       // seconds since 1904
    uint32_t modificationTime;
    int16_t language = 0;        // 0: English, the Mac's langEnglish
    int16_t quality = 0;

    const std::vector<SampleDescription>& Descriptions() const { return descriptions_; }
    const std::vector<SampleRun>& Runs() const { return runs_; }

    // Sound: the frames of all runs. Visual and text media: the duration their file gave.
    int64_t Duration() const;
    void SetNonSoundDuration(int64_t duration) { nonSoundDuration_ = duration; }

    // The description index (1-based) equal to description, added when new.
    int AddDescription(const SampleDescription& description);

    // Appends frames of PCM bytes described by description (AddMediaSample with one block):
    // in memory, extending the last memory run when it has the same description. The channel
    // count and rate must match the media's first description (a media has one timing).
    Status AppendSamples(const SampleDescription& description, const void* bytes, size_t size, int64_t frames);

    // As AppendSamples, but the media takes bytes over (a new run of its own) instead of copying them.
    Status AdoptSamples(const SampleDescription& description, std::vector<uint8_t>&& bytes, int64_t frames);

    // Appends a run (its description comes from `from`); merges with the last run when it continues it.
    Status AppendRun(const SampleRun& run, const SampleDescription& description);

    // The first sample's bytes of a text media (the 16-bit big-endian length and the text of a
    // QuickTime text sample, or a subtitle's text).
    const std::vector<uint8_t>& FirstTextSample() const { return firstTextSample_; }
    void SetFirstTextSample(std::vector<uint8_t> bytes) { firstTextSample_ = std::move(bytes); }

private:
    Status CheckAddedSamples(const SampleDescription& description, size_t size, int64_t frames) const;

    std::vector<SampleDescription> descriptions_;
    std::vector<SampleRun> runs_;
    int64_t nonSoundDuration_ = 0;
    std::vector<uint8_t> firstTextSample_;
};

}  // namespace vd::media
