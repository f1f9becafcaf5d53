#include "playback/sound_to_play.h"

#include "platform/media/selection.h"
#include "playback/media_pool.h"

#include <algorithm>

namespace vd::playback {

namespace {

// A time of 16.16 seconds in the movie's time scale, computed in single precision as the movie
// layer did, and kept within the movie.
int64_t MovieTime(int32_t fixedSeconds, int64_t duration, int32_t scale) {
    const float time = float(fixedSeconds) / 65536.0f * float(scale);
    return std::min<int64_t>(duration, int64_t(time));
}

}  // namespace

int32_t SoundToPlay(media::Movie&& movie, int32_t start, int32_t end, std::unique_ptr<audio::PlayingSound>& sound,
                    PrepareStep& step) {
    // Only the sound plays.
    for (media::Track* track : movie.TracksWith(media::Characteristic::kVisual)) track->enabled = false;

    const int64_t duration = movie.Duration();
    const int32_t scale = movie.timeScale;
    int64_t last = end == kToTheEnd || end < 0 ? duration : MovieTime(end, duration, scale);
    int64_t first = start < 0 ? 0 : MovieTime(start, duration, scale);
    if (last < first) std::swap(first, last);

    step = PrepareStep::kCopying;
    media::Movie part;
    if (media::Status s = media::CopyMovieSelection(movie, media::TimeRange{first, last - first, scale}, part)) return s;

    step = PrepareStep::kOutput;
    if (media::Status s = audio::PlayingSound::Make(std::move(part), sound)) return s;
    MediaPool* pool = MediaPool::Instance();
    sound->SetVolume(WrappedVolumeWord(pool ? pool->GetVolume(0) : 1.0f));
    return 0;
}

}  // namespace vd::playback
