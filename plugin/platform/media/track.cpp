#include "platform/media/track.h"

#include "platform/media/mac_time.h"
#include "platform/media/movie_time.h"

namespace vd::media {

Track::Track(Characteristic c, Media m)
    : characteristic(c), creationTime(m.creationTime), modificationTime(m.modificationTime), media(std::move(m)) {}

void Track::InsertMedia(int64_t movieTime) {
    inserted_ = true;
    offset_ = movieTime < 0 ? 0 : movieTime;
    modificationTime = MacSecondsNow();
}

int64_t Track::Duration(int32_t movieTimeScale) const {
    if (!inserted_) return 0;
    return offset_ + ConvertTimeScale(media.Duration(), media.timeScale, movieTimeScale);
}

int64_t Track::MediaTimeFromMovieTime(int64_t movieTime, int32_t movieTimeScale) const {
    return ConvertTimeScale(movieTime - offset_, movieTimeScale, media.timeScale);
}

int64_t Track::MovieTimeFromMediaTime(int64_t mediaTime, int32_t movieTimeScale) const {
    return offset_ + ConvertTimeScale(mediaTime, media.timeScale, movieTimeScale);
}

}  // namespace vd::media
