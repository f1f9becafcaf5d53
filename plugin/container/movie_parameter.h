// A function's argument as a sound movie: a reference text or path, a container with a "snd "
// stream, or a container stored by reference.
#pragma once

#include "container/stored_reference.h"
#include "platform/media/movie.h"
#include "platform/media/movie_from_file.h"

#include <fmx/fmx.h>

#include <cstdint>

namespace vd::container {

// Argument index as a movie. 0 with found set and movie replaced; 0 with found false for an empty
// argument or one of another type (a number, a date); otherwise the failure's code: -50 for an
// index past the arguments, -37 for a text as long as PATH_MAX or longer, -2114 for a container
// without a "snd " stream, -43 when no line of a by-reference container names an existing file,
// the path resolver's and the media layer's codes, -206/-2001 for a "snd " stream we cannot read.
// A text is resolved against the database's folder (as given for a remote database). Files are
// opened with the options (exact lengths unless asked otherwise).
int32_t MovieFromParameter(const FMX_DataVect* args, uint32_t index, media::Movie& movie, bool& found,
                           const media::OpenOptions& options = {});

}  // namespace vd::container
