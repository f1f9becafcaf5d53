// The sinks of a movie's mix (block_source.h): a sound file, written through a temporary file in
// its folder, and a sample store in memory. Every sound function's result becomes 44100 Hz, 16
// bits, stereo this way.
#pragma once

#include "platform/media/block_source.h"
#include "platform/media/errors.h"
#include "platform/media/movie.h"
#include "platform/media/sound_writer.h"

#include <string>

namespace vd::media {

// Writes to target through a temporary file in its folder, renamed into place when complete;
// on failure target is untouched and nothing is left beside it. util::kNoSoundTrack when the movie has
// no audio track.
Status RenderMovie(const Movie& movie, const std::string& target, const OutputFormat& format = CdQualityWav(),
                   const RenderOptions& options = {});

// The mix as a new movie in memory: one track of 'sowt' 16-bit samples of the output's rate and
// channels, held once in a buffer of its final size. For results that are read again in the same
// call and need no file of their own. util::kNoSoundTrack when the movie has no audio track.
Status RenderToMemory(const Movie& movie, const RenderOptions& options, Movie& rendered,
                      const OutputFormat& format = CdQualityWav());

}  // namespace vd::media
