// A movie's track: enabled flag, volume, characteristic, dates and its one media, placed in the
// movie at an offset once the media has been inserted.
#pragma once

#include "platform/media/media.h"

#include <cstdint>

namespace vd::media {

enum class Characteristic { kAudio, kVisual, kText };

inline constexpr int16_t kFullVolume = 256;  // 8.8 fixed; 0 and negative volumes are silent

class Track {
public:
    Track(Characteristic characteristic, Media media);

    Characteristic characteristic;
    bool enabled = true;
    int16_t volume = kFullVolume;
    uint32_t creationTime;
    uint32_t modificationTime;
    Media media;

    // Places the whole media in the movie from movieTime on (in the movie's time scale), as the
    // Mac's InsertMediaIntoTrack did; a track whose media was never inserted lasts 0 and is silent.
    void InsertMedia(int64_t movieTime);
    bool MediaInserted() const { return inserted_; }
    int64_t MovieOffset() const { return offset_; }

    // Duration in the movie's time scale (the media's duration, converted, after the offset).
    int64_t Duration(int32_t movieTimeScale) const;

    // Movie time ↔ media time for this track (nearest unit).
    int64_t MediaTimeFromMovieTime(int64_t movieTime, int32_t movieTimeScale) const;
    int64_t MovieTimeFromMediaTime(int64_t mediaTime, int32_t movieTimeScale) const;

private:
    bool inserted_ = false;
    int64_t offset_ = 0;
};

}  // namespace vd::media
