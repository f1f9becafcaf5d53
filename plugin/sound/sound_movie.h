// A sound function's movie together with the temporary WAV file it may live in. When a movie had to
// be converted before it could be worked on, the converted copy lives in a temporary file that
// belongs to whoever holds the movie; keeping the two in one object disposes of the movie first
// (closing its file) and then removes the file, on every path.
#pragma once

#include "platform/media/movie.h"
#include "sound/temporary_file.h"

namespace vd::sound {

struct SoundMovie {
    TemporaryFile backing;  // declared first so that it goes after the movie
    media::Movie movie;

    // The converted flag: the movie is a copy in a temporary WAV file of ours.
    bool Converted() const { return backing.Held(); }
};

}  // namespace vd::sound
