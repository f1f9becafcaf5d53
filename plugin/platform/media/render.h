// Rendering a movie's sound to a file: the enabled audio tracks, each scaled by its volume and
// an optional gain ramp, converted to the output's rate and channels and summed. This is how
// every sound function's result becomes a WAV file of 44100 Hz, 16 bits, stereo.
//
// Mixing sums the tracks (a mix of two full-volume tracks can reach twice full scale); the sum is
// rounded to 16 bits and clipped to -32768..32767. Functions that want an average (mixing two
// sounds) scale their samples themselves. Volumes are 8.8 fixed (256 = unity); 0 and negative
// volumes and disabled tracks are silent but still count in the length of the result.
#pragma once

#include "platform/media/errors.h"
#include "platform/media/movie.h"
#include "platform/media/sound_writer.h"

#include <optional>
#include <string>
#include <vector>

namespace vd::media {

// A straight change of a track's gain (1 = unchanged) from one time to another, in seconds from
// the movie's start: the gain goes from `from` at start to `to` at end, and is 1 outside
// [start, end). This is what fades need; being a plain description rather than a callback, the
// renderer can compute it for a whole block at once.
struct GainRamp {
    double start = 0, end = 0;
    float from = 1, to = 1;
};

struct RenderOptions {
    // By track index in the movie (TrackAt); missing or empty entries mean no ramp.
    std::vector<std::optional<GainRamp>> trackRamps;
};

// Whether rendering the movie would only copy its bytes: its one sound track holds 16-bit
// little-endian samples of the output's rate and channels, plays at full volume from time 0 and has
// no ramp. Such a movie's samples already are what a WAV rendered from it would hold.
bool RendersAsCopy(const Movie& movie, const OutputFormat& format, const RenderOptions& options = {});

// Writes to target through a temporary file in its folder, renamed into place when complete;
// on failure target is untouched and nothing is left beside it. kNoSoundTrack when the movie has
// no audio track.
Status RenderMovie(const Movie& movie, const std::string& target, const OutputFormat& format = CdQualityWav(),
                   const RenderOptions& options = {});

}  // namespace vd::media
