// Plain PCM WAV files read by ourselves. Every sound function's result is such a file (and so are
// most of the sounds people pass), and reading its header needs no media library: opening it this
// way spares loading FFmpeg for the commonest case. Anything out of the ordinary (compressed
// samples, sample layouts of other sizes, RF64, a header that does not add up) is left to the
// library opener, which gives the same movie for the files read here.
#pragma once

#include "platform/media/errors.h"
#include "platform/media/movie.h"
#include "platform/media/plain_wav_layout.h"

#include <cstdint>
#include <string>

#include <sys/stat.h>

namespace vd::media {

// The movie of a plain WAV file: one sound track whose samples stay in the file. handled is false
// (and the status 0) when the file is not one; the caller then opens it otherwise.
Status MovieFromPlainWav(const std::string& path, const struct stat& info, Movie& movie, bool& handled);

}  // namespace vd::media
