// Turning sound movies into plain PCM: writing a movie as a WAV file of 44100 Hz, 16 bits, stereo,
// and replacing a movie by one opened from such a file when its samples are not in a form the
// editing functions process.
#pragma once

#include "platform/media/errors.h"
#include "platform/media/movie.h"
#include "platform/media/render.h"
#include "sound/sound_movie.h"

#include <string>

namespace vd::sound {

// Writes the movie's sound to target with the fixed output settings. -2009 when the movie has no
// sound track, -2008 when that track's media has no sample description; the media layer's codes
// otherwise. target is replaced only when the whole file has been written. The options carry the
// volume envelopes of fades.
media::Status WriteMovieAsWav(const media::Movie& movie, const std::string& target,
                              const media::RenderOptions& options = {});

// Writes the movie to a new temporary WAV file and replaces it by the movie opened from that file;
// sound.backing then holds the file (a file held before is removed).
media::Status ConvertMovieToWav(SoundMovie& sound);

// Converts unless the first sound track's data format is 'sowt', 'twos' or 'raw ' (EnsurePcm) or
// 'sowt' alone (EnsureLittleEndianPcm). sound.Converted() tells afterwards whether it did.
media::Status EnsurePcm(SoundMovie& sound);
media::Status EnsureLittleEndianPcm(SoundMovie& sound);

}  // namespace vd::sound
