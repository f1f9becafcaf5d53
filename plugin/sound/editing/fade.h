// Fading a sound in or out: a straight volume ramp between two times.
//
// The ramp goes from volume 0 to 255 × level (fade in) or from 255 × level to 0 (fade out), on the
// scale where 256 is full volume, linearly (not in steps) from the start time to the end time.
// Outside that interval the sound plays at its track's own volume, unchanged: a fade out that ends
// before the sound does is followed by the rest at full volume, as with the volume ramps of the
// original media layer.
#pragma once

#include "platform/media/errors.h"
#include "platform/media/movie.h"
#include "platform/media/render.h"
#include "util/time_text.h"

#include <cstdint>

namespace vd::sound {

struct FadeRequest {
    util::SignedFixedTime start, end;
    float level = 1.0f;
    bool fadeIn = true;
};

struct Fade {
    uint32_t start = 0, end = 0;  // unsigned 16.16 seconds, start <= end
    int16_t fromVolume = 0, toVolume = 0;
};

// The request made to fit a sound of movieDuration units of timeScale (computed in single
// precision, as movie times were): negative times count back from the end; a start outside the
// sound becomes 0 and an end outside it the end; a level outside 0..1 becomes 0 (fade in) or 1
// (fade out); the two times are put in order. -50 for a time scale below 1.
media::Status SanitizeFade(const FadeRequest& request, int64_t movieDuration, int32_t timeScale, Fade& fade);

// The gain the fade gives a track of the given volume: the ramp's volume over the track's inside
// [start, end), 1 outside.
media::GainRamp FadeRamp(const Fade& fade, int16_t trackVolume);

// Render options that apply the fade to the movie's first sound track. -2009 without one.
media::Status FadeOptions(const media::Movie& movie, const Fade& fade, media::RenderOptions& options);

}  // namespace vd::sound
