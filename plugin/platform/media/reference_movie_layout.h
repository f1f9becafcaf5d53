// The bytes of a reference movie: a sound track whose samples stay in another file (named by an
// alias data reference) and a text track of 320 x 200 whose one sample, kept in the movie itself,
// says that the file has no preview and lasts the whole movie. Laid out here without any library:
// a file type atom, the text sample's media data, then the movie atom.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vd::media {

inline constexpr std::string_view kNoPreviewText = "This file has no preview";

// Where a sound's samples lie in its file and how they are described.
struct LinkedSoundTable {
    std::vector<uint8_t> description;  // one whole sample-description entry (size and format first)
    int32_t timeScale = 0;             // the sample rate
    std::vector<uint64_t> chunkOffsets;
    std::vector<uint32_t> samplesPerChunk;  // one per chunk
    uint32_t constantSampleSize = 0;        // 0: sampleSizes holds one per sample
    std::vector<uint32_t> sampleSizes;
    std::vector<std::pair<uint32_t, uint32_t>> durations;  // runs of (count, duration in timeScale)
    // An encoder's delay before the sound starts and its padding after it ends: left out of the
    // track by an edit, as the source's own reader leaves them out.
    int64_t leadingFrames = 0;
    int64_t trailingFrames = 0;

    int64_t SampleCount() const;
    int64_t Duration() const;
    // What plays: the duration without the delay and padding.
    int64_t PlayedDuration() const;
};

// The movie file's bytes for a sound whose samples are in source (absolute), the movie being
// written into movieFolder; times are Mac seconds.
std::vector<uint8_t> LayOutReferenceMovie(const LinkedSoundTable& sound, const std::string& source,
                                          const std::string& movieFolder, uint32_t macTime);

// The text sample that marks a reference movie: its 16-bit big-endian length, then the text.
std::vector<uint8_t> NoPreviewSample();

}  // namespace vd::media
