// Sound movies made in memory: the empty sound movie, and the movie synthesis fills block by
// block (append samples with their description, then insert the media into the track at 0).
#pragma once

#include "platform/media/errors.h"
#include "platform/media/movie.h"

namespace vd::media {

// A movie whose default data reference is memory, with one audio track (volume 256) and an empty
// sound media of the given time scale, not yet inserted into its track.
Status NewMemorySoundMovie(int32_t mediaTimeScale, Movie& movie);

// One track, sound media of time scale 44100 holding one silent frame ('sowt', 2 channels,
// 16 bits, 44100 Hz), inserted at time 0.
Status NewEmptySoundMovie(Movie& movie);

}  // namespace vd::media
