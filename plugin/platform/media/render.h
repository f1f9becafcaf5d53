// Rendering a movie's sound to a file: the enabled audio tracks, each scaled by its volume and
// an optional gain envelope, converted to the output's rate and channels and summed. This is how
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

#include <functional>
#include <string>
#include <vector>

namespace vd::media {

// A gain factor (1 = unchanged) for a time in seconds from the start of the movie: fades.
using GainEnvelope = std::function<float(double seconds)>;

struct RenderOptions {
    // By track index in the movie (TrackAt); missing or empty entries mean no envelope.
    std::vector<GainEnvelope> trackEnvelopes;
};

// Writes to target through a temporary file in its folder, renamed into place when complete;
// on failure target is untouched and nothing is left beside it. kNoSoundTrack when the movie has
// no audio track.
Status RenderMovie(const Movie& movie, const std::string& target, const OutputFormat& format = CdQualityWav(),
                   const RenderOptions& options = {});

}  // namespace vd::media
